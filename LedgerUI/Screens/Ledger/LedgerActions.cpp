#include "LedgerUI/Screens/Ledger/LedgerActions.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ranges>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/EntryTemplates.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Entry/BegunEntry.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerTableModel.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"

namespace {

struct Kind {
    std::string_view kind;
    std::optional<Command> command;
};

constexpr std::array kinds{
    Kind{EntryKind::expense, std::nullopt},          Kind{EntryKind::income, Command::newIncome},
    Kind{EntryKind::transfer, Command::newTransfer}, Kind{EntryKind::exchange, Command::newExchange},
    Kind{EntryKind::refund, std::nullopt},           Kind{EntryKind::opening, std::nullopt}};

struct Column {
    const char* name;
    LedgerSort::Key key;
};
constexpr std::array sortedColumns{Column{"date", LedgerSort::Key::date}, Column{"entry", LedgerSort::Key::entry},
                                   Column{"account", LedgerSort::Key::account},
                                   Column{"member", LedgerSort::Key::member},
                                   Column{"amount", LedgerSort::Key::amount}};

/// Whether another entry like this one can be recorded. Openings are made once, and a refund pays one income back.
bool mayRepeat(const LedgerTransaction& entry, const LedgerSnapshot& snapshot)
{
    const bool isRepeatable = entry.kind != EntryKind::opening && entry.kind != EntryKind::refund &&
                              displayKind(entry) == entry.kind && EntryForm::supports(entry.kind);
    return isRepeatable && !LedgerEntryAccess::accounts(snapshot, entry.kind).empty();
}

/// Whether several are chosen of which the member may undo one at least: of very many that stand the first are looked
/// at.
bool mayReverseSome(const LedgerActions::Chosen& chosen)
{
    constexpr std::size_t most = 10'000;
    const auto stands = [&](std::uint32_t at) {
        const auto& entry = chosen.book->transaction(at);
        return !entry.reversedBy && entry.kind != EntryKind::reversal;
    };
    return chosen.entries.size() > 1 &&
           std::ranges::any_of(chosen.entries | std::views::filter(stands) | std::views::take(most),
                               [&](std::uint32_t at) {
                                   return !LedgerEntryAccess::whyNotReverse(chosen.book->transaction(at),
                                                                            chosen.book->snapshot().currentMember);
                               });
}

QString idOf(std::string_view kind)
{
    return QStringLiteral("newEntry.") + qString(kind);
}

/// What was begun in this program last, else what an earlier one has left.
std::optional<EntryDraft> begunIn(LedgerStore& store)
{
    auto own = store.drafts().own();
    return own ? own : store.drafts().left();
}

}

std::vector<Action> LedgerActions::recording(LedgerStore& store,
                                             const std::function<void(const EntryForm::Opening& opening)>& record,
                                             const std::function<void()>& showTemplates)
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
        const auto begin = [record, kind] { record({.kind = std::string{kind}, .accountID = {}, .prefilled = {}}); };
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
    const auto draft = begunIn(store);
    actions.push_back({.id = idOf("draft"),
                       .text = word(ledgerWords(), "newEntry.draft"),
                       .glyph = QStringLiteral("pencil"),
                       .whyNot = busy,
                       .isOffered = mayRecord && draft.has_value(),
                       .run = [&store, record] {
                           // As it stands when it is asked for.
                           if (const auto begun = begunIn(store)) {
                               auto entry = BegunEntry::continued(*begun, InterfaceLanguage::tag());
                               record({.kind = entry.kind, .accountID = {}, .prefilled = std::move(entry)});
                           }
                       }});
    actions.push_back({.id = idOf("templates"),
                       .text = word(templateWords(), "menu"),
                       .glyph = QStringLiteral("arrow-repeat"),
                       .isOffered = mayRecord && store.templates().areOffered(),
                       .run = showTemplates});
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
    return ids << QString{} << idOf("draft") << idOf("templates");
}

std::vector<Action> LedgerActions::onEntries(const Chosen& chosen)
{
    const bool isOne = chosen.detail.has_value();
    const auto at = isOne ? chosen.entries.front() : LedgerBook::none;
    const auto* leg = isOne ? leadingLeg(*chosen.book, at) : nullptr;
    const auto account = leg ? chosen.book->accounts().id(leg->account) : std::string{};
    const auto id = isOne ? chosen.detail->id : std::string{};
    const auto correction = isOne ? chosen.detail->correction : QString{};
    const auto refund = isOne ? refundOf(*chosen.book, at) : std::nullopt;
    const auto busy = chosen.isBusy ? word(ledgerWords(), "newEntry.busy") : QString{};
    return {
        {.id = QStringLiteral("open"),
         .text = word(ledgerWords(), "action.open"),
         .isOffered = isOne,
         .run = chosen.open},
        {.id = QStringLiteral("reverse"),
         .text = word(ledgerWords(), "reverse"),
         .glyph = QStringLiteral("arrow-counterclockwise"),
         .whyNot = chosen.isBusy ? busy : correction,
         .isOffered = isOne && (chosen.detail->offersReversal || !correction.isEmpty()),
         .run = [reverse = chosen.reverse, id] { reverse(id); }},
        {.id = QStringLiteral("reverseSeveral"),
         .text = word(ledgerWords(), "action.reverseSeveral",
                      {groupedNumber(chosen.entries.size(), InterfaceLanguage::tag())}),
         .glyph = QStringLiteral("arrow-counterclockwise"),
         .whyNot = busy,
         .isOffered = mayReverseSome(chosen),
         .run = chosen.reverseSeveral},
        {.id = QStringLiteral("duplicate"),
         .text = word(ledgerWords(), "action.duplicate"),
         .glyph = QStringLiteral("files"),
         .whyNot = busy,
         .isOffered = isOne && mayRepeat(chosen.book->transaction(at), chosen.book->snapshot()),
         .run = [duplicate = chosen.duplicate, id] { duplicate(id); }},
        {.id = QStringLiteral("keepTemplate"),
         .text = word(templateWords(), "keep"),
         .glyph = QStringLiteral("arrow-repeat"),
         .whyNot = busy,
         .isOffered = isOne && chosen.keepTemplate && mayRepeat(chosen.book->transaction(at), chosen.book->snapshot()),
         .run = [keep = chosen.keepTemplate, id] { keep(id); }},
        {.id = QStringLiteral("refund"),
         .text = word(ledgerWords(), "action.refund"),
         .glyph = entryKindGlyph(EntryKind::refund),
         .whyNot = busy,
         .isOffered = refund.has_value(),
         .run = [begin = chosen.refund, refund] { begin(*refund); }},
        {.id = QStringLiteral("share"),
         .text = word(EntryCopy::words(), "shareReceipt"),
         .glyph = QStringLiteral("share"),
         .isOffered = isOne,
         .run = [share = chosen.share, id] { share(id); }},
        {.id = QStringLiteral("onlyAccount"),
         .text = leg ? word(ledgerWords(), "action.onlyAccount", {chosen.book->names().account(account)}) : QString{},
         .isOffered = leg != nullptr,
         .run = [showOnly = chosen.showOnly, account] { showOnly(account); }},
        {.id = QStringLiteral("copy"),
         .text = word(ledgerWords(), "action.copy"),
         .keys = KeyBindings::keys(Command::copyRows),
         .isOffered = !chosen.entries.empty(),
         .run = chosen.copy}};
}

QList<QString> LedgerActions::entryMenu()
{
    return {QStringLiteral("open"),
            QStringLiteral("reverse"),
            QStringLiteral("reverseSeveral"),
            QStringLiteral("duplicate"),
            QStringLiteral("keepTemplate"),
            QStringLiteral("refund"),
            QStringLiteral("share"),
            QStringLiteral("onlyAccount"),
            {},
            QStringLiteral("copy"),
            {}};
}

std::vector<Action> LedgerActions::sorting(const Order& now)
{
    std::vector<Action> actions;
    actions.reserve(sortedColumns.size() + 2); // turning them and the grouping come behind
    for (const auto& [column, key] : sortedColumns)
        actions.push_back({.id = QStringLiteral("sort.") + QString::fromLatin1(column),
                           .text = word(ledgerWords(), std::string{"column."} + column),
                           .isOn = now.sort.key == key,
                           .run = [sortBy = now.sortBy, sorted = key] { sortBy(sorted); }});
    actions.push_back({.id = QStringLiteral("turnSort"),
                       .text = word(ledgerWords(), "action.turnSort"),
                       .keys = KeyBindings::keys(Command::turnSort),
                       .run = [sortBy = now.sortBy, key = now.sort.key] { sortBy(key); }});
    actions.push_back({.id = QStringLiteral("groupByDay"),
                       .text = word(ledgerWords(), "group.byDay"),
                       .keys = KeyBindings::keys(Command::groupByDay),
                       .isOn = now.isByDay,
                       .run = now.turnGrouping});
    return actions;
}

std::vector<Action> LedgerActions::columns(LedgerTable& table, const std::function<void()>& changed)
{
    const auto column = [&](int at, const char* name, bool isOffered) {
        return Action{.id = QStringLiteral("columns.") + QString::fromLatin1(name),
                      .text = word(ledgerWords(), std::string{"column."} + name),
                      .isOffered = isOffered,
                      .isOn = table.isColumnWanted(at),
                      .run = [&table, at, changed] {
                          table.setColumnWanted(at, !table.isColumnWanted(at));
                          changed();
                      }};
    };
    return {
        column(LedgerTableModel::account, "account", true),
        column(LedgerTableModel::member, "member", true),
        column(LedgerTableModel::balance, "balance", table.entries().hasBalances()),
        {.id = QStringLiteral("columns.usual"), .text = word(ledgerWords(), "columns.usual"), .run = [&table, changed] {
             table.resetColumns();
             changed();
         }}};
}

QList<QString> LedgerActions::columnsMenu()
{
    return {QStringLiteral("columns.account"),
            QStringLiteral("columns.member"),
            QStringLiteral("columns.balance"),
            {},
            QStringLiteral("columns.usual")};
}

QList<QString> LedgerActions::sortingMenu()
{
    QList<QString> ids;
    for (const auto& [column, key] : sortedColumns)
        ids << QStringLiteral("sort.") + QString::fromLatin1(column);
    return ids << QString{} << QStringLiteral("turnSort") << QStringLiteral("groupByDay");
}
