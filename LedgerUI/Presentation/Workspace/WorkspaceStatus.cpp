#include "LedgerUI/Presentation/Workspace/WorkspaceStatus.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"

#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

QString refreshText(const WorkspaceFreshness& freshness, std::string_view locale)
{
    const auto& words = workspaceWords();
    if (freshness.isBusy)
        return wordIn(locale, words, "refreshing");
    if (!freshness.lastRefresh)
        return {};
    const auto time = DayText::timeOfDay(LedgerDay::localGregorian().time(*freshness.lastRefresh), locale);
    return wordIn(locale, words, freshness.isStale ? "notRefreshed" : "updated", {time.toStdString()});
}

QString countText(std::size_t entries, std::string_view locale)
{
    const auto& words = workspaceWords();
    if (entries == 0)
        return wordIn(locale, words, "noEntries");
    if (entries == 1)
        return wordIn(locale, words, "oneEntry");
    return wordIn(locale, words, "entries", {groupedNumber(entries, locale)});
}

}

WorkspaceStatus workspaceStatus(const WorkspaceFreshness& freshness, std::string_view locale)
{
    const auto keys = KeyBindings::shown(Command::refresh);
    return {.refresh = refreshText(freshness, locale),
            .refreshHint = wordIn(locale, workspaceWords(), "refreshHint", {keys.toStdString()}),
            .count = countText(freshness.entries, locale),
            .unconfirmed = freshness.unconfirmed == 0
                               ? QString{}
                               : countedIn(locale, workspaceWords(), "unconfirmed", freshness.unconfirmed),
            .isWarning = freshness.isStale && !freshness.isBusy};
}
