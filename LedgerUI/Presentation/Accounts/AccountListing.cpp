#include "LedgerUI/Presentation/Accounts/AccountListing.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Text/Collation.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Text/Values/MoneySums.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Line = AccountBook::Line;

/// An account that is shown, with the places of its lines in the book.
struct Shown {
    const Account* account = nullptr;
    std::size_t first = 0;
    std::size_t last = 0;
    std::string sortKey; // of its name
};

class Lister {
public:
    explicit Lister(AccountListing& listing)
        : m_listing(listing), m_book(*listing.book), m_names(m_book.snapshot(), listing.locale),
          m_wanted(TextFold::folded(TextFold::trimmed(listing.query.search.toStdString())))
    {
    }

    void list()
    {
        auto shown = gather();
        m_listing.accounts = shown.size();
        std::ranges::sort(shown, [this](const Shown& left, const Shown& right) { return isBefore(left, right); });
        MoneySums totals;
        std::optional<AccountGroup> group;
        for (const auto& each : shown) {
            if (const auto own = accountGroupOf(*each.account); own != group) {
                group = own;
                addHead(own);
            }
            for (auto at = each.first; at <= each.last; ++at) {
                addLine(each, at);
                totals.add(m_book.lines()[at].currency, m_book.lines()[at].balance);
            }
        }
        m_listing.totals = totals.texts(m_listing.locale);
    }

private:
    std::vector<Shown> gather()
    {
        std::vector<Shown> shown;
        const auto& lines = m_book.lines();
        for (std::size_t first = 0; first < lines.size();) {
            auto last = first;
            while (last + 1 < lines.size() && lines[last + 1].account == lines[first].account)
                ++last;
            const auto& account = m_book.account(lines[first]);
            if ((m_listing.query.showsArchived || !account.archived) && matches(account))
                shown.push_back({&account, first, last, Collation::sortKey(account.name, m_listing.locale)});
            first = last + 1;
        }
        return shown;
    }

    [[nodiscard]] bool matches(const Account& account) const
    {
        const auto bears = [this](const std::string& text) { return TextFold::folded(text).contains(m_wanted); };
        const auto responsible = account.responsibleMemberID();
        return bears(account.name) || (responsible && bears(m_names.member(*responsible))) ||
               std::ranges::any_of(account.currencies, bears);
    }

    [[nodiscard]] bool isBefore(const Shown& left, const Shown& right) const
    {
        const auto leftGroup = accountGroupOf(*left.account);
        const auto rightGroup = accountGroupOf(*right.account);
        if (leftGroup != rightGroup)
            return leftGroup < rightGroup;
        const auto& sort = m_listing.query.sort;
        const bool turns = sort.direction == AccountSort::Direction::descending;
        if (sort.key == AccountSort::Key::balance) {
            const bool leftHolds = left.account->holds(sort.currency);
            const bool rightHolds = right.account->holds(sort.currency);
            if (leftHolds != rightHolds)
                return leftHolds;
            const auto leftBalance = left.account->balance(sort.currency);
            const auto rightBalance = right.account->balance(sort.currency);
            if (leftBalance != rightBalance)
                return turns ? leftBalance > rightBalance : leftBalance < rightBalance;
        } else if (left.sortKey != right.sortKey) {
            return turns ? left.sortKey > right.sortKey : left.sortKey < right.sortKey;
        }
        return std::tie(left.sortKey, left.first) < std::tie(right.sortKey, right.first);
    }

    void addHead(AccountGroup group)
    {
        AccountRow row;
        row.id = std::string{accountGroupName(group)};
        row.group = group;
        row.isHead = true;
        row.name = accountGroupTitle(group, m_listing.locale);
        m_listing.rows.push_back(std::move(row));
    }

    void addLine(const Shown& shown, std::size_t at)
    {
        const auto& line = m_book.lines()[at];
        const auto& locale = m_listing.locale;
        const auto movement = [&](const MoneySums::Minor& minor) {
            return minor && *minor != 0 ? movementText(*minor, line.currency, locale) : unknownMoney(line.currency);
        };
        AccountRow row;
        row.id = accountRowID(shown.account->id, line.currency);
        row.group = accountGroupOf(*shown.account);
        row.isFirst = at == shown.first;
        row.isLast = at == shown.last;
        row.line = at;
        row.name = qString(shown.account->name);
        row.glyph = accountGroupGlyph(accountGroupInUse(*shown.account));
        row.currency = qString(line.currency);
        row.incoming = movement(line.incoming);
        row.outgoing = movement(line.outgoing);
        row.balance = balanceText(line.balance, line.currency, locale);
        m_listing.rows.push_back(std::move(row));
    }

    AccountListing& m_listing;
    const AccountBook& m_book;
    LedgerNames m_names;
    std::string m_wanted; // folded
};

std::vector<std::string> currenciesHeld(const AccountBook& book)
{
    std::vector<std::string> held;
    for (const auto& currency : CurrencyInfo::supported()) {
        if (std::ranges::find(book.lines(), currency.code, &Line::currency) != book.lines().end())
            held.push_back(currency.code);
    }
    return held;
}

AccountNotice noticeFor(const AccountListing& listing)
{
    using Reason = AccountNotice::Reason;
    using Remedy = AccountNotice::Remedy;
    const auto& locale = listing.locale;
    const auto text = [&](std::string_view key) { return wordIn(locale, accountWords(), key); };
    const auto& snapshot = listing.book->snapshot();
    if (snapshot.accounts.empty()) {
        if (MemberRights::canManage(snapshot.currentMember))
            return {Reason::noAccounts, text("empty.none"), text("empty.noneBody"), {}};
        return {Reason::noAccess, text("empty.noAccess"), text("empty.noAccessBody"), {}};
    }
    const auto search = listing.query.search.trimmed();
    if (!search.isEmpty())
        return {Reason::noMatch, text("empty.noMatch"),
                wordIn(locale, accountWords(), "empty.noMatchBody", {search.left(60).toStdString()}),
                AccountNotice::Offer{Remedy::clearSearch, text("empty.clearSearch")}};
    return {Reason::onlyArchived, text("empty.archived"), text("empty.archivedBody"),
            AccountNotice::Offer{Remedy::showArchived, text("showArchived")}};
}

}

AccountSort AccountSort::by(Key wanted, const std::string& wantedCurrency) const
{
    if (wanted == key && wantedCurrency == currency)
        return turned();
    return {wanted, wanted == Key::name ? Direction::ascending : Direction::descending, wantedCurrency};
}

AccountSort AccountSort::turned() const
{
    return {key, direction == Direction::ascending ? Direction::descending : Direction::ascending, currency};
}

int AccountListing::rowOf(std::string_view id) const
{
    const auto found = std::ranges::find(rows, id, &AccountRow::id);
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

std::string accountRowID(std::string_view accountID, std::string_view currency)
{
    return std::string{accountID} + '/' + std::string{currency};
}

AccountListing accountListing(AccountBookPointer book, AccountQuery query, std::string locale)
{
    AccountListing listing{.book = std::move(book),
                           .query = std::move(query),
                           .locale = std::move(locale),
                           .rows = {},
                           .totals = {},
                           .currencies = {},
                           .notice = {}};
    listing.currencies = currenciesHeld(*listing.book);
    Lister{listing}.list();
    if (listing.rows.empty())
        listing.notice = noticeFor(listing);
    return listing;
}
