#include "LedgerUI/Presentation/Text/KeyHelp.h"

#include <array>
#include <utility>

#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Presentation/Text/KeyWords.h"
#include "LedgerUI/Presentation/Text/ListedText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr std::array scopes{
    std::pair{KeyScope::everywhere, "everywhere"},
    std::pair{KeyScope::ledger, "ledger"},
    std::pair{KeyScope::form, "form"},
};

QString native(const QKeySequence& keys)
{
    return keys.toString(QKeySequence::NativeText);
}

KeyLine pagesLine(std::string_view locale)
{
    const auto first = KeyBindings::pageKeys(0).first();
    const auto last = KeyBindings::pageKeys(KeyBindings::boundPages - 1).first();
    return {.keys = native(first) + QStringLiteral(" … ") + native(last), .text = wordIn(locale, keyWords(), "pages")};
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
        if (scope == KeyScope::everywhere)
            section.lines.push_back(pagesLine(locale));
        sections.push_back(std::move(section));
    }
    return sections;
}
