#include "LedgerUI/Presentation/Text/ExportChangesText.h"

#include <algorithm>

#include <QStringList>

#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

constexpr std::size_t namedAtMost = 3;

}

QString exportChangesText(const ExportChanges& changes, std::string_view locale)
{
    QStringList parts;
    const auto count = [&](std::string_view key, std::size_t entries) {
        if (entries > 0)
            parts << countedIn(locale, fileWords(), key, entries);
    };
    count("changes.added", changes.added);
    count("changes.removed", changes.removed);
    count("changes.edited", changes.edited);
    const auto named = std::min(changes.renamed.size(), namedAtMost);
    for (std::size_t at = 0; at < named; ++at)
        parts << wordIn(locale, fileWords(), "changes.renamed", {changes.renamed[at].before, changes.renamed[at].now});
    count("changes.renamedMore", changes.renamed.size() - named);
    const auto say = [&](std::string_view key, bool isSo) {
        if (isSo)
            parts << wordIn(locale, fileWords(), key);
    };
    say("changes.categories", changes.hasOtherCategories);
    say("changes.receipts", changes.hasOtherReceipts);
    say("changes.settings", changes.hasOtherSettings);
    return parts.join(wordIn(locale, fileWords(), "changes.between"));
}
