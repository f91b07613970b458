#include "LedgerService/Books/ReversalRows.h"

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerService/Books/BookRefusal.h"

namespace LedgerService {

namespace {

LedgerTransaction oppositeOf(const LedgerTransaction& original, const Reversal& command, const ReversalRows& rows)
{
    LedgerTransaction entry;
    entry.id = rows.entryID;
    entry.kind = EntryKind::reversal;
    entry.date = command.date;
    entry.note = command.reason;
    entry.createdAt = rows.now;
    entry.memberID = rows.member.id;
    entry.reversalOf = original.id;
    entry.legs = ReversalRules::legs(original);
    return entry;
}

}

ReversalContext ReversalRows::context() const
{
    ReversalContext context;
    context.member = &member;
    context.today = today;
    context.start = EntryDays::start(settings);
    context.original = original ? &*original : nullptr;
    for (const auto& account : accounts)
        context.accounts.push_back(&account);
    context.refundsExist = refundsExist;
    return context;
}

std::expected<EntryChange, Refusal> decide(const Reversal& command, const ReversalRows& rows)
{
    const auto context = rows.context();
    if (const auto refusal = ReversalRules::whyNot(command, context))
        return std::unexpected(BookRefusal::of(*refusal));
    auto entry = oppositeOf(promised(rows.original, "a reversal that is accepted has an original"), command, rows);
    auto balances = BalanceRules::after(entry.legs, context.accounts);
    require(balances.has_value(), "a reversal that is accepted leaves possible balances");
    require(balances->empty() == entry.legs.empty(), "the accounts of all legs are loaded");
    return EntryChange{std::move(entry), *std::move(balances)};
}

}
