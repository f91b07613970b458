#include "LedgerUI/Presentation/Workspace/QuitWarning.h"

#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

std::optional<QuitWarning> quitWarning(const QuitLosses& losses, std::string_view locale)
{
    const auto& words = workspaceWords();
    if (losses.awaitsChange)
        return QuitWarning{.title = wordIn(locale, words, "quitTitle"), .text = wordIn(locale, words, "quitText")};
    if (losses.hasUnconfirmed)
        return QuitWarning{.title = wordIn(locale, commandWords(), "uncertainTitle"),
                           .text = wordIn(locale, EntryWords::words(), "uncertainDiscard")};
    if (losses.hasUnsavedChanges)
        return QuitWarning{.title = wordIn(locale, dialogWords(), "discardTitle"),
                           .text = wordIn(locale, dialogWords(), "discardBody")};
    return std::nullopt;
}
