#include "LedgerCore/Domain/Imports/ImportEffects.h"

#include <algorithm>
#include <map>
#include <utility>

#include "LedgerCore/Domain/Entries/Posting/PostingRules.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Money/Money.h"

std::size_t ImportEffects::recordedBefore(const LedgerImportPlan& plan, const VisibleBooks& books)
{
    return static_cast<std::size_t>(std::ranges::count_if(
        plan.inputs, [&](const TransactionInput& input) { return books.entry(input.idempotencyKey) != nullptr; }));
}

std::vector<ImportEffect> ImportEffects::of(const LedgerImportPlan& plan, const VisibleBooks& books)
{
    std::map<std::pair<std::string, std::string>, std::int64_t> changes;
    for (const auto& input : plan.inputs) {
        if (books.entry(input.idempotencyKey))
            continue;
        for (const auto& leg : PostingRules::legs(input)) {
            auto& change = changes[{leg.accountID, leg.currency}];
            change = Money::add(change, leg.amountMinor).value_or(change);
        }
    }
    std::vector<ImportEffect> effects;
    for (const auto& account : books.snapshot().accounts) {
        for (const auto& currency : account.currencies) {
            const auto found = changes.find({account.id, currency});
            if (found == changes.end() || found->second == 0)
                continue;
            const auto before = account.balance(currency);
            effects.push_back({account.id, currency, before, Money::add(before, found->second).value_or(before)});
        }
    }
    return effects;
}
