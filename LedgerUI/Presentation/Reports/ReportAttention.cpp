#include "LedgerUI/Presentation/Reports/ReportAttention.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Dividends/DividendSummary.h"
#include "LedgerCore/Domain/Entries/EntryStanding.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"
#include "LedgerUI/Presentation/Reports/FloatSpending.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/InvitationExpiry.h"

namespace {

bool wantsReceipt(const LedgerTransaction& entry)
{
    const bool hasOne =
        entry.kind == EntryKind::income || entry.kind == EntryKind::expense || entry.kind == EntryKind::refund;
    return hasOne && EntryStanding::isInForce(entry) && entry.attachmentIDs.empty();
}

class Collection {
public:
    Collection(const VisibleBooks& books, std::string_view locale)
        : m_books(books), m_snapshot(books.snapshot()), m_locale(locale)
    {
    }

    void addStart()
    {
        const auto& settings = m_snapshot.financialSettings;
        if (settings && !settings->bookkeepingStartDate && MemberRights::canManage(m_snapshot.currentMember))
            m_items.push_back({.kind = AttentionItem::Kind::startUnconfirmed, .text = word("startDate")});
    }

    /// Accounts that held a float and hold less than a month's spending, nothing or less than that, in a currency that
    /// they were funded in.
    void addFloats(std::chrono::year_month_day today)
    {
        const FloatSpending spending{m_snapshot, today};
        for (const auto& account : m_snapshot.accounts) {
            if (!account.isRestricted() || account.archived)
                continue;
            for (const auto& currency : account.currencies)
                addFloat(account, currency, spending.inAMonth(account.id, currency));
        }
    }

    void addReceipts(const Period& period)
    {
        if (const auto count = ReportAttention::entriesWithoutReceipt(m_snapshot, period); count > 0)
            m_items.push_back({.kind = AttentionItem::Kind::receiptsMissing,
                               .text = countedIn(m_locale, reportWords(), "receipts", count)});
    }

    void addOpenings()
    {
        if (!OpeningBalancePolicy::areWanted(m_snapshot))
            return;
        std::size_t count = 0;
        std::string account;
        std::string currency;
        for (const auto& each : m_books.openings()) {
            if (OpeningBalancePolicy::whyNot(m_snapshot, each))
                continue;
            if (count++ == 0) {
                account = each.accountID;
                currency = each.currency;
            }
        }
        if (count > 0)
            m_items.push_back({.kind = AttentionItem::Kind::openingsMissing,
                               .text = countedIn(m_locale, reportWords(), "openings", count),
                               .accountID = std::move(account),
                               .currency = std::move(currency)});
    }

    void addDividends()
    {
        // What is to be done about them is done on their page.
        if (!m_snapshot.dividends || !FinancialFeaturePolicy::isListedInSidebar(m_snapshot))
            return;
        for (const auto& currency : currenciesOf(*m_snapshot.dividends)) {
            const auto summary = DividendSummary::create(*m_snapshot.dividends, currency, std::nullopt, std::nullopt);
            if (!summary)
                continue; // the dividends page says what is wrong with them
            std::int64_t advances = 0;
            for (const auto& participant : summary->participants)
                advances = Money::add(advances, participant.advanceMinor).value_or(advances);
            addSum(AttentionItem::Kind::dividendsUnpaid, "unpaid", summary->unpaidMinor, currency);
            addSum(AttentionItem::Kind::advancesUnapplied, "advances", advances, currency);
        }
    }

    std::vector<AttentionItem> items() && { return std::move(m_items); }

private:
    void addFloat(const Account& account, const std::string& currency, std::int64_t spentInAMonth)
    {
        const auto balance = account.balance(currency);
        const auto sum = [&](std::int64_t minor) {
            return balanceText(minor, currency, m_locale).text().toStdString();
        };
        const auto add = [&](AttentionItem::Kind kind, std::string_view key,
                             std::initializer_list<std::string_view> values) {
            m_items.push_back({.kind = kind,
                               .text = wordIn(m_locale, reportWords(), key, values),
                               .accountID = account.id,
                               .currency = currency,
                               .canFund = canFund(account, currency)});
        };
        if (balance < 0)
            add(AttentionItem::Kind::floatBelowZero, "float.negative", {account.name, sum(balance)});
        else if (balance == 0 && account.balances.contains(currency))
            add(AttentionItem::Kind::floatEmpty, "float.empty", {account.name, currency});
        else if (balance > 0 && balance < spentInAMonth)
            add(AttentionItem::Kind::floatLow, "float.low", {account.name, sum(balance), sum(spentInAMonth)});
    }

    [[nodiscard]] bool canFund(const Account& account, std::string_view currency) const
    {
        const auto& member = m_snapshot.currentMember;
        return std::ranges::any_of(
            LedgerEntryAccess::accounts(m_snapshot, EntryKind::transfer), [&](const Account* source) {
                return source->holds(currency) && !LedgerEntryAccess::whyNotReceive(*source, account, member);
            });
    }

    void addSum(AttentionItem::Kind kind, std::string_view key, std::int64_t minor, const std::string& currency)
    {
        if (minor <= 0)
            return;
        const auto sum = balanceText(minor, currency, m_locale).text().toStdString();
        m_items.push_back({.kind = kind, .text = wordIn(m_locale, reportWords(), key, {sum}), .currency = currency});
    }

    static std::vector<std::string> currenciesOf(const DividendState& state)
    {
        std::vector<std::string> codes;
        const auto take = [&](const std::string& code) {
            if (std::ranges::find(codes, code) == codes.end())
                codes.push_back(code);
        };
        for (const auto& batch : state.batches)
            take(batch.currency);
        for (const auto& movement : state.movements)
            take(movement.currency);
        return codes;
    }

    [[nodiscard]] QString word(std::string_view key) const { return wordIn(m_locale, reportWords(), key); }

    const VisibleBooks& m_books;
    const LedgerSnapshot& m_snapshot;
    std::string_view m_locale;
    std::vector<AttentionItem> m_items;
};

}

std::size_t ReportAttention::entriesWithoutReceipt(const LedgerSnapshot& snapshot, const Period& period)
{
    return static_cast<std::size_t>(std::ranges::count_if(
        snapshot.transactions, [&](const auto& entry) { return wantsReceipt(entry) && period.contains(entry.date); }));
}

std::vector<AttentionItem> ReportAttention::items(const VisibleBooks& books, const Period& period,
                                                  std::chrono::year_month_day today, std::string_view locale)
{
    Collection collection{books, locale};
    collection.addStart();
    collection.addFloats(today);
    collection.addOpenings();
    collection.addDividends();
    collection.addReceipts(period);
    return std::move(collection).items();
}

std::vector<AttentionItem> ReportAttention::reversedByOthers(const LedgerSnapshot& snapshot, const Period& period,
                                                             std::string_view locale)
{
    const auto& own = snapshot.currentMember.id;
    std::unordered_map<std::string_view, const LedgerTransaction*> reversed;
    for (const auto& entry : snapshot.transactions) {
        if (entry.reversedBy && entry.memberID == own)
            reversed.emplace(entry.id, &entry);
    }
    const auto count = std::ranges::count_if(snapshot.transactions, [&](const auto& entry) {
        const auto found = entry.reversalOf ? reversed.find(*entry.reversalOf) : reversed.end();
        return found != reversed.end() && EntryStanding::isUndoneByOthers(*found->second, entry, own) &&
               period.contains(entry.date);
    });
    if (count == 0)
        return {};
    return {{.kind = AttentionItem::Kind::entriesReversed,
             .text = countedIn(locale, reportWords(), "reversed", static_cast<std::size_t>(count))}};
}

std::vector<AttentionItem> ReportAttention::unconfirmed(const KeptRequests& kept, std::string_view locale)
{
    const auto count = kept.count();
    if (count == 0)
        return {};
    if (count > 1 || kept.entries.empty())
        return {{.kind = AttentionItem::Kind::requestsUnconfirmed,
                 .text = countedIn(locale, reportWords(), "requests", count)}};
    const auto& entry = kept.entries.front();
    const auto& input = entry.input;
    const auto sum = balanceText(input.amountMinor, input.currency, locale).text().toStdString();
    const auto day = DayText::shortDate(input.date, locale).toStdString();
    return {{.kind = AttentionItem::Kind::entryUnconfirmed,
             .text = wordIn(locale, reportWords(), entry.outcomeUnknown ? "unconfirmed" : "unsent", {day, sum})}};
}

std::vector<AttentionItem> ReportAttention::expiring(const std::vector<PendingInvitation>& invitations,
                                                     std::string_view today, std::string_view locale)
{
    std::size_t over = 0;
    std::vector<const PendingInvitation*> ending;
    for (const auto& each : invitations) {
        const auto expiry = InvitationExpiry::of(each, today);
        over += expiry.isOver ? 1 : 0;
        if (!expiry.isOver && expiry.isSoon())
            ending.push_back(&each);
    }
    std::vector<AttentionItem> items;
    const auto add = [&](QString text) {
        items.push_back({.kind = AttentionItem::Kind::invitationsExpiring, .text = std::move(text)});
    };
    if (ending.size() == 1)
        add(wordIn(locale, reportWords(), "invitation.ends",
                   {ending.front()->name,
                    DayText::shortDate(DayText::dayOf(ending.front()->expiresAt), locale).toStdString()}));
    else if (!ending.empty())
        add(countedIn(locale, reportWords(), "invitations.end", ending.size()));
    if (over > 0)
        add(countedIn(locale, reportWords(), "invitations.over", over));
    return items;
}

std::vector<AttentionItem> ReportAttention::due(const std::vector<TemplateProposal>& proposals, std::string_view locale)
{
    constexpr std::size_t few = 2;
    if (proposals.size() > few)
        return {{.kind = AttentionItem::Kind::entriesDue,
                 .text = countedIn(locale, reportWords(), "due", proposals.size())}};
    std::vector<AttentionItem> items;
    items.reserve(proposals.size());
    for (const auto& [occurrence, name] : proposals)
        items.push_back({.kind = AttentionItem::Kind::entryDue,
                         .text = wordIn(locale, reportWords(), "dueItem",
                                        {name, DayText::shortDate(occurrence.day, locale).toStdString()}),
                         .occurrence = occurrence});
    return items;
}
