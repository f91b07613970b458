#include "LedgerUI/Presentation/Workspace/WorkspaceStatus.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"

#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Presentation/Workspace/WorkspaceWords.h"

namespace {

QString refreshText(const WorkspaceFreshness& freshness)
{
    const auto& words = workspaceWords();
    if (freshness.isBusy)
        return word(words, "refreshing");
    if (!freshness.lastRefresh)
        return {};
    const auto time =
        DayText::timeOfDay(LedgerDay::localGregorian().time(*freshness.lastRefresh), InterfaceLanguage::tag());
    return word(words, freshness.isStale ? "notRefreshed" : "updated", {time.toStdString()});
}

QString countText(std::size_t entries)
{
    const auto& words = workspaceWords();
    if (entries == 0)
        return word(words, "noEntries");
    if (entries == 1)
        return word(words, "oneEntry");
    return word(words, "entries", {LedgerWords::number(entries, InterfaceLanguage::tag())});
}

}

WorkspaceStatus workspaceStatus(const WorkspaceFreshness& freshness)
{
    const auto keys = KeyBindings::keys(Command::refresh).first().toString(QKeySequence::NativeText);
    return {.refresh = refreshText(freshness),
            .refreshHint = word(workspaceWords(), "refreshHint", {keys.toStdString()}),
            .count = countText(freshness.entries),
            .isWarning = freshness.isStale && !freshness.isBusy};
}
