#include "LedgerCore/Domain/Imports/ImportDryRun.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include <boost/unordered/unordered_flat_map.hpp>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using EntryText::given;

/// What keeps a row from being sent for sure: the service may know more than the member sees.
bool isCertain(const PostingRefusal& refusal)
{
    return refusal.reason != PostingReason::reserveUnknown && refusal.reason != PostingReason::historyIncomplete;
}

/// Once mended, the row will move its money; one that is refused for the balances themselves cannot.
bool isAboutBalances(const PostingRefusal& refusal)
{
    return refusal.reason == PostingReason::insufficientFunds || refusal.reason == PostingReason::balanceLimit;
}

/// Takes the rows of a plan into its own copy of the accounts, one after another.
class Trial {
public:
    Trial(const VisibleBooks& books, std::string_view today)
        : m_books(books), m_today(today), m_start(EntryDays::start(books.snapshot().financialSettings)),
          m_accounts(books.snapshot().accounts)
    {
        for (auto& account : m_accounts)
            m_byID.emplace(account.id, &account);
    }

    void take(int line, const TransactionInput& input)
    {
        if (m_books.entry(input.idempotencyKey))
            return;
        const auto context = contextOf(input);
        auto refusals = PostingRules::refusals(input, context);
        std::erase_if(refusals, [](const PostingRefusal& each) { return !isCertain(each); });
        for (const auto& refusal : refusals)
            m_refused.push_back({line, refusal.reason, EntryRules::problem(refusal, input, context)});
        if (std::ranges::none_of(refusals, isAboutBalances))
            apply(input);
    }

    std::vector<ImportRefusal> refused() && { return std::move(m_refused); }

private:
    Account* account(std::string_view id)
    {
        const auto found = m_byID.find(id);
        return found == m_byID.end() ? nullptr : found->second;
    }

    [[nodiscard]] bool isOpened(const Account& account, const std::string& currency) const
    {
        return m_books.hasOpening(account.id, currency) || m_opened.contains({account.id, currency});
    }

    PostingContext contextOf(const TransactionInput& input)
    {
        PostingContext context;
        context.member = &m_books.snapshot().currentMember;
        context.today = m_today;
        context.start = m_start;
        context.source = account(given(input.sourceAccountID));
        context.target = account(given(input.targetAccountID));
        context.category = m_books.category(given(input.categoryID));
        context.openingExists =
            input.kind == EntryKind::opening && context.target && isOpened(*context.target, input.currency);
        if (context.source && context.source->isEmployeeFund())
            context.balanceKnown = m_books.isBalanceKnown(*context.source, input.currency);
        return context;
    }

    void apply(const TransactionInput& input)
    {
        if (input.kind == EntryKind::opening)
            m_opened.emplace(given(input.targetAccountID), input.currency);
        for (const auto& leg : PostingRules::legs(input)) {
            if (auto* const moved = account(leg.accountID)) {
                auto& balance = moved->balances[leg.currency];
                balance = Money::add(balance, leg.amountMinor).value_or(balance);
            }
        }
    }

    const VisibleBooks& m_books;
    std::string_view m_today;
    std::string_view m_start;
    std::vector<Account> m_accounts; // with the balances that the rows so far leave
    boost::unordered_flat_map<std::string_view, Account*> m_byID;
    std::set<std::pair<std::string, std::string>> m_opened; // account and currency, by rows of the plan
    std::vector<ImportRefusal> m_refused;
};

}

std::vector<ImportRefusal> ImportDryRun::run(const LedgerImportPlan& plan, const VisibleBooks& books,
                                             std::string_view today)
{
    require(plan.lines.size() == plan.inputs.size(), "a plan names the line of each of its entries");
    Trial trial{books, today};
    for (std::size_t at = 0; at < plan.inputs.size(); ++at)
        trial.take(plan.lines[at], plan.inputs[at]);
    return std::move(trial).refused();
}

std::string_view ImportDryRun::key(const ImportRefusal& refusal)
{
    switch (refusal.reason) {
    case PostingReason::inFuture:
        return "inFuture";
    case PostingReason::openingDay:
        return "openingDay";
    case PostingReason::openingExists:
        return "openingExists";
    case PostingReason::textTooLong:
        return "noteTooLong";
    case PostingReason::textUnsound:
        return "noteUnsound";
    case PostingReason::insufficientFunds:
        return "insufficientFunds";
    case PostingReason::balanceLimit:
        return "balanceLimit";
    default:
        return "refused";
    }
}
