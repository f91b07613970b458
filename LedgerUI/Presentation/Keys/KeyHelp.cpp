#include "LedgerUI/Presentation/Keys/KeyHelp.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

#include <array>
#include <utility>

#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr std::array scopes{
    std::pair{KeyScope::everywhere, "everywhere"},
    std::pair{KeyScope::ledger, "ledger"},
    std::pair{KeyScope::form, "form"},
    std::pair{KeyScope::day, "day"},
    std::pair{KeyScope::list, "list"},
    std::pair{KeyScope::rights, "rights"},
};

QString native(const QKeySequence& keys)
{
    return keys.toString(QKeySequence::NativeText);
}

KeyLine rangeLine(const QKeySequence& first, const QKeySequence& last, const QString& text)
{
    return {.keys = native(first) + QStringLiteral(" … ") + native(last), .text = text};
}

/// What is done by whichever key of several.
void addRanges(KeySection& section, KeyScope scope, std::string_view locale)
{
    if (scope == KeyScope::everywhere)
        section.lines.push_back(rangeLine(KeyBindings::pageKeys(0).first(),
                                          KeyBindings::pageKeys(KeyBindings::boundPages - 1).first(),
                                          wordIn(locale, keyWords(), "pages")));
    if (scope == KeyScope::day)
        section.lines.push_back(rangeLine(Qt::Key_0, Qt::Key_9, wordIn(locale, keyWords(), "typeDay")));
}

}

std::vector<KeySection> keyHelp(std::string_view locale)
{
    std::vector<KeySection> sections;
    for (const auto& [scope, title] : scopes) {
        KeySection section{.title = wordIn(locale, keyWords(), title), .lines = {}};
        for (const auto& binding : KeyBindings::all()) {
            if (binding.scope != scope)
                continue;
            QStringList keys;
            for (const auto& each : KeyBindings::keys(binding.command))
                keys << native(each);
            section.lines.push_back({.keys = listed(keys, locale), .text = wordIn(locale, keyWords(), binding.words)});
        }
        addRanges(section, scope, locale);
        sections.push_back(std::move(section));
    }
    return sections;
}
