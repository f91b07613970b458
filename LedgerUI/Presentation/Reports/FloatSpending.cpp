#include "LedgerUI/Presentation/Reports/FloatSpending.h"

#include <set>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/EntryStanding.h"
#include "LedgerCore/Domain/Money/Money.h"

using std::chrono::days;
using std::chrono::sys_days;

namespace {

constexpr std::int64_t months = 3;
constexpr days daysSeen{30 * months};

}

FloatSpending::FloatSpending(const LedgerSnapshot& snapshot, std::chrono::year_month_day today)
{
    std::set<std::string_view> floats;
    for (const auto& account : snapshot.accounts) {
        if (account.isRestricted())
            floats.insert(account.id);
    }
    if (floats.empty())
        return;
    const auto first = LedgerDay::format(sys_days{today} - daysSeen + days{1});
    const auto last = LedgerDay::format(today);
    for (const auto& entry : snapshot.transactions) {
        const bool isSpent = entry.kind == EntryKind::expense || entry.kind == EntryKind::refund;
        if (!isSpent || !EntryStanding::isInForce(entry) || entry.date < first || entry.date > last)
            continue;
        for (const auto& leg : entry.legs) {
            if (leg.amountMinor >= 0 || !floats.contains(leg.accountID))
                continue;
            auto& spent = m_spent[{leg.accountID, leg.currency}];
            spent = Money::add(spent, -leg.amountMinor).value_or(spent);
        }
    }
}

std::int64_t FloatSpending::inAMonth(std::string_view accountID, std::string_view currency) const
{
    const auto found = m_spent.find({accountID, currency});
    return found == m_spent.end() ? 0 : found->second / months;
}
