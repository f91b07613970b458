#include "LedgerUI/Screens/Ledger/LedgerActions.h"

#include <algorithm>
#include <array>
#include <optional>

#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Entry/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"

namespace {

struct Kind {
    std::string_view kind;
    std::optional<Command> command;
};

constexpr std::array kinds{
    Kind{EntryKind::expense, std::nullopt},          Kind{EntryKind::income, Command::newIncome},
    Kind{EntryKind::transfer, Command::newTransfer}, Kind{EntryKind::exchange, Command::newExchange},
    Kind{EntryKind::refund, std::nullopt},           Kind{EntryKind::opening, std::nullopt}};

QString idOf(std::string_view kind)
{
    return QStringLiteral("newEntry.") + qString(kind);
}

}

std::vector<Action> LedgerActions::recording(const LedgerStore& store,
                                             const std::function<void(const std::string& kind)>& record)
{
    const auto snapshot = store.snapshot();
    const bool mayRecord = snapshot && snapshot->currentMember.canRecord();
    const auto busy = store.isBusy() ? word(ledgerWords(), "newEntry.busy") : QString{};
    std::vector<Action> actions{{.id = QStringLiteral("newEntry"),
                                 .text = word(ledgerWords(), "newEntry"),
                                 .keys = KeyBindings::keys(Command::newEntry),
                                 .whyNot = busy,
                                 .isOffered = false}};
    for (const auto& [kind, command] : kinds) {
        const bool isPossible = mayRecord && !LedgerEntryAccess::accounts(*snapshot, kind).empty();
        const auto begin = [record, kind] { record(std::string{kind}); };
        if (isPossible && !actions.front().isOffered) {
            actions.front().isOffered = true;
            actions.front().run = begin;
        }
        actions.push_back({.id = idOf(kind),
                           .text = word(ledgerWords(), "kind." + std::string{kind}),
                           .glyph = entryKindGlyph(kind),
                           .ink = snapshot ? entryKindColor(kind, *snapshot) : ThemeColor{Token::text2},
                           .keys = command ? KeyBindings::keys(*command) : QList<QKeySequence>{},
                           .whyNot = isPossible ? busy : word(ledgerWords(), "newEntry.none"),
                           .run = begin});
    }
    return actions;
}

QList<QString> LedgerActions::recordingMenu()
{
    QList<QString> ids;
    for (const auto& each : kinds) {
        if (each.kind == EntryKind::refund)
            ids << QString{};
        ids << idOf(each.kind);
    }
    return ids;
}
