#include "LedgerUI/Presentation/Reports/Grids/FundMovementGrids.h"

#include <algorithm>
#include <numeric>
#include <ranges>
#include <tuple>
#include <unordered_map>
#include <utility>

#include <QStringList>

#include "LedgerCore/Domain/Entries/Posting/PostingRules.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportSorting.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Kind = ReportGridColumn::Kind;
using Level = ReportGridRow::Level;
using Tone = ReportGridCell::Tone;

constexpr char rowMark = '#'; // between an entry and the number of its movement

class Funds {
public:
    Funds(const ReportBooks& books, const ReportQuery& query, std::string_view locale)
        : m_snapshot(*books.snapshot), m_books(books.lookUp()), m_book(*books.book), m_query(query), m_locale(locale),
          m_funds(m_book.fundMovements(scope(), ReportRanges::of(query.period)))
    {
    }

    FundMovementGrids made(std::size_t most)
    {
        FundMovementGrids grids{.sums = sums(), .list = {}, .count = m_funds.legs.size()};
        workOutBalances();
        // The first of another order can be any of them.
        putLatestFirst(m_query.sorts.contains(FundMovementGrids::tableID) ? m_funds.legs.size() : most);
        grids.list = emptyList();
        const auto order = askedOrder(grids.list);
        const auto count = std::min(most, order.size());
        grids.list.isCut = count < order.size();
        grids.list.rows.reserve(count);
        for (const auto at : order | std::views::take(count))
            grids.list.rows.push_back(row(m_funds.legs[at], at));
        return grids;
    }

private:
    [[nodiscard]] ReportScope scope() const { return {.currency = m_query.currency, .accountIDs = m_query.accountIDs}; }
    [[nodiscard]] QString word(std::string_view key) const { return wordIn(m_locale, reportWords(), key); }
    [[nodiscard]] const LedgerTransaction& entry(const FundMovementLeg& leg) const
    {
        return m_snapshot.transactions[leg.entry];
    }
    [[nodiscard]] const LedgerTransaction* find(const std::optional<std::string>& id) const
    {
        return id ? m_books.books.entry(*id) : nullptr;
    }

    [[nodiscard]] ReportGrid sums() const
    {
        ReportGrid grid{.id = "fundSums",
                        .name = word("table.fundSums"),
                        .columns = {{.id = "fund.kind", .head = word("fund.kind"), .kind = Kind::name},
                                    {.id = "fund.in", .head = word("fund.in")},
                                    {.id = "fund.out", .head = word("fund.out")},
                                    {.id = "fund.net", .head = word("fund.net")}},
                        .rows = {},
                        .currency = ReportGrids::currencyOf(m_query.currency, m_locale)};
        const auto add = [&](std::string id, const QString& name, const FundMovementSum& sum,
                             const std::set<Movement>& movements, Level level) {
            const auto cell = [&](std::int64_t minor, LegDirection direction, Tone tone) {
                return ReportGrids::moneyCell(movementText(minor, m_query.currency, m_locale), tone,
                                              ReportBacking{m_query.period,
                                                            {.scope = scope(),
                                                             .movements = movements,
                                                             .legs = ReportFigure::Legs::funds,
                                                             .direction = direction}});
            };
            grid.rows.push_back({.id = std::move(id),
                                 .cells = {{.text = name},
                                           cell(sum.arrivedMinor, LegDirection::arriving, Tone::plain),
                                           cell(sum.leftMinor, LegDirection::leaving, Tone::plain),
                                           cell(sum.netMinor(), LegDirection::both, Tone::strong)},
                                 .level = level});
        };
        for (const auto& sum : m_funds.sums) {
            const std::string name{rawValue(sum.movement)};
            add(name, word("movement." + name), sum, {sum.movement}, Level::plain);
        }
        if (m_funds.reversals.legCount > 0)
            add("reversals", word("fund.reversals"), m_funds.reversals, {Movement::income, Movement::expense},
                Level::plain);
        if (m_funds.total.legCount > 0)
            add("total", word("total"), m_funds.total, {}, Level::total);
        return grid;
    }

    /// What is on the account after each of its movements, where a single one is looked at whose entries explain what
    /// it holds.
    void workOutBalances()
    {
        if (!m_query.accountIDs || m_query.accountIDs->size() != 1)
            return;
        const auto account = std::ranges::find(m_snapshot.accounts, *m_query.accountIDs->begin(), &Account::id);
        if (account == m_snapshot.accounts.end())
            return;
        auto legs = m_book.legs({.scope = scope()}, ReportRanges::of(Period::allTime()));
        std::ranges::sort(legs, [this](const auto& left, const auto& right) {
            return comesBefore(left.entry, left.amountMinor, right.entry, right.amountMinor);
        });
        std::int64_t balance = 0;
        for (const auto& leg : legs) {
            balance += leg.amountMinor; // no sum of a book's amounts overflows
            m_balances[leg.entry] = balance;
        }
        if (balance != account->balance(m_query.currency))
            m_balances.clear();
    }

    [[nodiscard]] bool comesBefore(std::uint32_t left, std::int64_t leftMinor, std::uint32_t right,
                                   std::int64_t rightMinor) const
    {
        const auto& first = m_snapshot.transactions[left];
        const auto& second = m_snapshot.transactions[right];
        return std::tie(first.date, first.createdAt, left, leftMinor) <
               std::tie(second.date, second.createdAt, right, rightMinor);
    }

    /// The others follow in any order.
    void putLatestFirst(std::size_t count)
    {
        auto& legs = m_funds.legs;
        const auto end = legs.begin() + static_cast<std::ptrdiff_t>(std::min(count, legs.size()));
        std::ranges::partial_sort(legs, end, [this](const auto& left, const auto& right) {
            return comesBefore(right.entry, right.amountMinor, left.entry, left.amountMinor);
        });
    }

    [[nodiscard]] ReportGrid emptyList() const
    {
        ReportGrid grid{.id = std::string{FundMovementGrids::tableID},
                        .name = word("table.funds"),
                        .columns = {{.id = "day", .head = word("day"), .kind = Kind::label},
                                    {.id = "fund.movement",
                                     .head = word("fund.movement"),
                                     .kind = Kind::name,
                                     .beside = word("fund.remarks")},
                                    {.id = "account", .head = word("account"), .kind = Kind::label},
                                    {.id = "fund.in", .head = word("fund.in")},
                                    {.id = "fund.out", .head = word("fund.out")}},
                        .rows = {},
                        .currency = ReportGrids::currencyOf(m_query.currency, m_locale)};
        if (!m_balances.empty())
            grid.columns.push_back({.id = "fund.balance", .head = word("fund.balance")});
        return grid;
    }

    /// The places of all movements in the order that is asked for the list, which is told how it is sorted. Only what
    /// decides the order is looked at, as few of very many are shown.
    [[nodiscard]] std::vector<std::size_t> askedOrder(ReportGrid& list) const
    {
        std::vector<std::size_t> order(m_funds.legs.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        const auto asked = m_query.sorts.find(list.id);
        const auto column = asked == m_query.sorts.end()
                                ? list.columns.end()
                                : std::ranges::find(list.columns, asked->second.column, &ReportGridColumn::id);
        if (column == list.columns.end())
            return order;
        ReportGrid keys{.id = list.id, .name = {}, .columns = {*column}, .rows = {}};
        for (const auto at : order)
            keys.rows.push_back({.id = std::to_string(at), .cells = {sortedBy(m_funds.legs[at], column->id)}});
        ReportSorting::apply(keys, m_query.sorts, m_locale);
        std::ranges::transform(keys.rows, order.begin(), [](const ReportGridRow& row) { return std::stoul(row.id); });
        list.sort = std::move(keys.sort);
        list.sorted = std::move(keys.sorted);
        return order;
    }

    /// What a movement has in this column, as far as its order goes.
    [[nodiscard]] ReportGridCell sortedBy(const FundMovementLeg& leg, std::string_view column) const
    {
        if (column == "day")
            return {.text = qString(entry(leg).date)};
        if (column == "fund.movement")
            return {.text = title(leg)};
        if (column == "account")
            return {.text = qString(m_snapshot.accounts[leg.account].name)};
        ReportGridCell figure;
        if (const auto balance = m_balances.find(leg.entry); column == "fund.balance" && balance != m_balances.end())
            figure.value = balance->second;
        else if (column == (leg.amountMinor < 0 ? "fund.out" : "fund.in"))
            figure.value = leg.amountMinor;
        return figure;
    }

    [[nodiscard]] ReportGridRow row(const FundMovementLeg& leg, std::size_t at) const
    {
        const auto& moved = entry(leg);
        const auto amount = ReportGrids::moneyCell(movementText(leg.amountMinor, m_query.currency, m_locale),
                                                   leg.amountMinor < 0 ? Tone::plain : Tone::incoming, std::nullopt);
        const bool leaves = leg.amountMinor < 0;
        ReportGridRow row{.id = moved.id + rowMark + std::to_string(at),
                          .cells = {{.text = DayText::shortDate(moved.date, m_locale), .copied = qString(moved.date)},
                                    {.text = title(leg), .beside = remarks(leg)},
                                    {.text = qString(m_snapshot.accounts[leg.account].name)},
                                    leaves ? ReportGridCell{} : amount,
                                    leaves ? amount : ReportGridCell{}}};
        if (const auto balance = m_balances.find(leg.entry); balance != m_balances.end())
            row.cells.push_back(ReportGrids::moneyCell(balanceText(balance->second, m_query.currency, m_locale),
                                                       Tone::quiet, std::nullopt));
        return row;
    }

    [[nodiscard]] QString title(const FundMovementLeg& leg) const
    {
        return leg.reverses ? word("reversal") : word("fund." + std::string{rawValue(leg.movement)});
    }

    /// What is to be known of a movement beside its kind: the other end, the rate, what may still be refunded.
    [[nodiscard]] QString remarks(const FundMovementLeg& leg) const
    {
        const auto& moved = entry(leg);
        QStringList parts;
        if (leg.reverses)
            parts << undone(leg, moved);
        else if (leg.movement == Movement::transfer)
            parts << otherEnd(leg, moved);
        else if (leg.movement == Movement::exchange)
            parts << rate(moved);
        else if (leg.movement == Movement::refund)
            parts << refunded(moved);
        else
            parts << qString(moved.participantName.value_or(std::string{}));
        parts << qString(moved.note);
        parts.removeAll(QString{});
        return parts.join(QStringLiteral(" · "));
    }

    [[nodiscard]] QString undone(const FundMovementLeg& leg, const LedgerTransaction& moved) const
    {
        const auto* original = find(moved.reversalOf);
        const auto kind = word("fund." + std::string{rawValue(leg.movement)});
        return original ? wordIn(m_locale, reportWords(), "fund.of",
                                 {kind.toStdString(), DayText::shortDate(original->date, m_locale).toStdString()})
                        : QString{};
    }

    [[nodiscard]] QString otherEnd(const FundMovementLeg& leg, const LedgerTransaction& moved) const
    {
        const auto& own = m_snapshot.accounts[leg.account].id;
        for (const auto& each : moved.legs) {
            const auto account = std::ranges::find(m_snapshot.accounts, each.accountID, &Account::id);
            if (each.accountID != own && account != m_snapshot.accounts.end())
                return (leg.amountMinor < 0 ? QStringLiteral("→ %1") : QStringLiteral("← %1"))
                    .arg(qString(account->name));
        }
        return {};
    }

    [[nodiscard]] QString rate(const LedgerTransaction& moved) const
    {
        const auto given = std::ranges::find_if(moved.legs, [](const auto& leg) { return leg.amountMinor < 0; });
        const auto taken = std::ranges::find_if(moved.legs, [](const auto& leg) { return leg.amountMinor > 0; });
        if (given == moved.legs.end() || taken == moved.legs.end())
            return {};
        const auto text = rateText(-given->amountMinor, given->currency, taken->amountMinor, taken->currency, m_locale);
        return wordIn(m_locale, reportWords(), "fund.rate", {given->currency, text.toStdString()});
    }

    [[nodiscard]] QString refunded(const LedgerTransaction& moved) const
    {
        const auto* income = find(moved.originalTransactionID);
        if (!income)
            return qString(moved.externalReference.value_or(std::string{}));
        // Of what is left a person may read who may not refund it.
        const auto left = PostingRules::receivedMinor(*income, m_query.currency) -
                          m_books.books.refundedMinor(income->id, m_query.currency);
        const auto day = DayText::shortDate(income->date, m_locale).toStdString();
        if (left <= 0)
            return wordIn(m_locale, reportWords(), "fund.refunded", {day});
        const auto sum = balanceText(left, m_query.currency, m_locale).text().toStdString();
        return wordIn(m_locale, reportWords(), "fund.refundable", {day, sum});
    }

    const LedgerSnapshot& m_snapshot;
    const ReportBooks::Lookup m_books;
    const ReportBook& m_book;
    const ReportQuery& m_query;
    std::string_view m_locale;
    FundMovements m_funds;
    std::unordered_map<std::uint32_t, std::int64_t> m_balances; // after each entry
};

}

FundMovementGrids FundMovementGrids::of(const ReportBooks& books, const ReportQuery& query, std::string_view locale,
                                        std::size_t most)
{
    return Funds{books, query, locale}.made(most);
}

std::string_view FundMovementGrids::entryOf(std::string_view rowID)
{
    return rowID.substr(0, rowID.rfind(rowMark));
}
