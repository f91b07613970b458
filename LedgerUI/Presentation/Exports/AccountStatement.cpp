#include "LedgerUI/Presentation/Exports/AccountStatement.h"

#include <algorithm>

#include <QStringList>

#include "LedgerCore/Domain/Reports/ReportBook.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBalances.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerRow.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Side = PrintedColumn::Side;
using Width = PrintedColumn::Width;
using Level = PrintedRow::Level;

const Account* accountOf(const LedgerBook& book, const LedgerFilter& filter)
{
    using Part = LedgerFilter::Part;
    const bool isMore = filter.without(Part::accounts).without(Part::currencies).narrows();
    if (isMore || filter.accountIDs.size() != 1)
        return nullptr;
    const auto& accounts = book.snapshot().accounts;
    const auto found = std::ranges::find(accounts, *filter.accountIDs.begin(), &Account::id);
    return found == accounts.end() ? nullptr : &*found;
}

class Statement {
public:
    Statement(const LedgerBook& book, const ReportBook& reports, const LedgerFilter& filter, const Account& account)
        : m_book{book}, m_reports{reports}, m_filter{filter}, m_account{account}
    {
        const auto order = book.order();
        m_ranks.resize(order.size());
        for (std::uint32_t rank = 0; rank < order.size(); ++rank)
            m_ranks[order[rank]] = rank;
    }

    /// Nothing when the amounts cannot be added up.
    std::optional<PrintedTable> table(const std::string& currency)
    {
        m_currency = currency;
        m_scope = {.currency = currency, .accountIDs = std::set<std::string, std::less<>>{m_account.id}};
        const auto report = m_reports.report(m_scope, {ReportRanges::of(m_filter.period)});
        if (!report)
            return std::nullopt;
        const auto& figures = report->periods.front();
        const bool hasBalance = explainsBalance();
        PrintedTable made{.title = qString(currency), .columns = columns(hasBalance), .rows = {}};
        if (!hasBalance)
            made.note = word(exportWords(), "statement.unknown");
        else
            made.rows.push_back(balanceRow("statement.opening", figures.openingMinor, Level::parent, {}, {}));
        std::int64_t balance = figures.openingMinor; // the book knows that no sum of its amounts overflows
        std::int64_t in = 0;
        std::int64_t out = 0;
        for (const auto& leg : legs()) {
            balance += leg.amountMinor;
            (leg.amountMinor < 0 ? out : in) += leg.amountMinor;
            made.rows.push_back(legRow(leg, hasBalance ? std::optional{balance} : std::nullopt));
        }
        made.rows.push_back(balanceRow("statement.closing",
                                       hasBalance ? std::optional{figures.closingMinor} : std::nullopt, Level::total,
                                       in, out));
        return made;
    }

private:
    [[nodiscard]] QString word(const WordTable& table, std::string_view key) const
    {
        return wordIn(m_book.locale(), table, key);
    }

    [[nodiscard]] std::vector<PrintedColumn> columns(bool hasBalance) const
    {
        std::vector<PrintedColumn> all{{.head = word(ledgerWords(), "column.date")},
                                       {.head = word(ledgerWords(), "column.entry"), .width = Width::rest},
                                       {.head = word(ledgerWords(), "totals.in"), .side = Side::end},
                                       {.head = word(ledgerWords(), "totals.out"), .side = Side::end}};
        if (hasBalance)
            all.push_back({.head = word(exportWords(), "statement.balance"), .side = Side::end});
        return all;
    }

    /// Whether the entries that the member sees add up to what the account holds.
    [[nodiscard]] bool explainsBalance() const
    {
        const auto all = m_reports.report(m_scope, {ReportRanges::of(Period::allTime())});
        return all && all->periods.front().closingMinor == m_account.balance(m_currency);
    }

    /// From the oldest on, in the order in which they were recorded.
    [[nodiscard]] std::vector<ReportFigureLeg> legs() const
    {
        auto legs = m_reports.legs({.scope = m_scope}, ReportRanges::of(m_filter.period));
        std::ranges::sort(legs, [this](const auto& left, const auto& right) {
            const auto leftRank = m_ranks[left.entry];
            const auto rightRank = m_ranks[right.entry];
            return leftRank != rightRank ? leftRank > rightRank : left.amountMinor < right.amountMinor;
        });
        return legs;
    }

    [[nodiscard]] QString figure(std::int64_t minor) const
    {
        return balanceText(minor, m_currency, m_book.locale()).figure();
    }

    [[nodiscard]] PrintedRow legRow(const ReportFigureLeg& leg, std::optional<std::int64_t> balance) const
    {
        const auto row = rowFor(m_book, leg.entry, {});
        const auto& entry = m_book.transaction(leg.entry);
        QStringList second{row.kindTitle == row.title ? QString{} : row.kindTitle, otherEnd(entry), row.note};
        second.removeAll(QString{});
        PrintedRow made{.cells = {{DayText::shortDate(entry.date, m_book.locale())},
                                  {.text = row.title, .second = second.join(QStringLiteral(" · "))},
                                  {leg.amountMinor < 0 ? QString{} : figure(leg.amountMinor)},
                                  {leg.amountMinor < 0 ? figure(leg.amountMinor) : QString{}}}};
        if (balance)
            made.cells.push_back({figure(*balance)});
        return made;
    }

    /// Where the money of a movement inside the company came from or went to.
    [[nodiscard]] QString otherEnd(const LedgerTransaction& entry) const
    {
        for (const auto& leg : entry.legs) {
            if (leg.accountID != m_account.id)
                return qString(m_book.names().account(leg.accountID));
        }
        return {};
    }

    [[nodiscard]] PrintedRow balanceRow(std::string_view key, std::optional<std::int64_t> balance, Level level,
                                        std::optional<std::int64_t> in, std::optional<std::int64_t> out) const
    {
        const auto sum = [&](const std::optional<std::int64_t>& minor) { return minor ? figure(*minor) : QString{}; };
        const bool isTotal = level == Level::total;
        PrintedRow made{
            .cells = {{}, {word(exportWords(), isTotal && !balance ? "statement.sum" : key)}, {sum(in)}, {sum(out)}},
            .level = level};
        if (balance)
            made.cells.push_back({figure(*balance)});
        return made;
    }

    const LedgerBook& m_book;
    const ReportBook& m_reports;
    const LedgerFilter& m_filter;
    const Account& m_account;
    std::string m_currency;
    ReportScope m_scope;
    std::vector<std::uint32_t> m_ranks; // of entries in the book's order, newest first
};

}

std::optional<PrintedDocument> AccountStatement::document(const LedgerBook& book, const LedgerFilter& filter,
                                                          const PrintMoment& moment)
{
    const auto* account = accountOf(book, filter);
    const auto* reports = account ? book.reports() : nullptr;
    if (!reports)
        return std::nullopt;
    const auto& locale = book.locale();
    PrintedDocument document{.locale = locale,
                             .company = qString(book.snapshot().company.name),
                             .title = wordIn(locale, exportWords(), "statement"),
                             .facts = {PrintHead::accounts({account->name}, locale),
                                       PrintHead::period(filter.period, locale), PrintHead::asOf(moment, locale)},
                             .fileName =
                                 QStringLiteral("tallyfold-statement-") + PrintHead::days(filter.period, moment)};
    Statement statement{book, *reports, filter, *account};
    for (const auto& currency : currenciesOf(*account)) {
        if (!filter.currencies.empty() && !filter.currencies.contains(currency))
            continue;
        auto table = statement.table(currency);
        if (!table)
            return std::nullopt;
        document.tables.push_back(*std::move(table));
    }
    return document;
}
