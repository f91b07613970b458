#include "LedgerUI/Presentation/Reports/Grids/ReportOwnGrids.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerUI/Presentation/Reports/ReportFigureText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

using std::chrono::sys_days;
using Kind = ReportGridColumn::Kind;
using Tone = ReportGridCell::Tone;

namespace {

constexpr std::size_t entriesShown = 8;

class Own {
public:
    Own(const ReportBooks& books, const ReportQuery& query, std::string_view locale)
        : m_books(books), m_query(query), m_locale(locale)
    {
    }

    [[nodiscard]] std::expected<ReportGrid, ReportError> accounts() const
    {
        ReportGrid grid{.id = "ownAccounts",
                        .name = word("table.ownAccounts"),
                        .columns = {{.id = "account", .head = word("account"), .kind = Kind::name},
                                    {.id = "currency", .head = word("currency"), .kind = Kind::label},
                                    {.id = "opening", .head = word("opening")},
                                    {.id = "matrix.transfer", .head = word("matrix.transfer")},
                                    {.id = "income", .head = word("income"), .isSpare = true},
                                    {.id = "expense", .head = word("expense")},
                                    {.id = "movement.other", .head = word("movement.other"), .isSpare = true},
                                    {.id = "closing", .head = word("closing")}},
                        .rows = {}};
        for (const auto& code : m_books.book->currencies()) {
            const auto matrix = m_books.book->matrix({.currency = code}, {ReportRanges::of(m_query.period)});
            if (!matrix)
                return std::unexpected(matrix.error());
            for (const auto& row : matrix->rows)
                grid.rows.push_back({.id = row.accountID + ' ' + code, .cells = cells(row, code), .currency = code});
        }
        return grid;
    }

    [[nodiscard]] ReportGrid latest() const
    {
        ReportGrid grid{
            .id = "latest",
            .name = word("table.latest"),
            .columns = {{.id = "day", .head = word("day"), .kind = Kind::label},
                        {.id = "entry", .head = word("entry"), .kind = Kind::name, .beside = word("entry.note")},
                        {.id = "currency", .head = word("currency"), .kind = Kind::label},
                        {.id = "amount", .head = word("amount")}},
            .rows = {}};
        for (const auto* entry : latestEntries())
            grid.rows.push_back({.id = entry->id, .cells = cells(*entry), .currency = ownLeg(*entry).currency});
        return grid;
    }

private:
    [[nodiscard]] QString word(std::string_view key) const { return wordIn(m_locale, reportWords(), key); }

    [[nodiscard]] std::vector<ReportGridCell> cells(const ReportAccountRow& row, const std::string& code) const
    {
        const auto& cell = row.cells.front();
        const auto found = std::ranges::find(m_books.snapshot->accounts, row.accountID, &Account::id);
        const auto figure = [&](std::set<Movement> movements) {
            return ReportFigure{.scope = {.currency = code, .accountIDs = {{row.accountID}}},
                                .movements = std::move(movements)};
        };
        const auto moved = [&](std::int64_t minor, std::set<Movement> movements, Tone tone) {
            return ReportGrids::moneyCell(movementText(minor, code, m_locale), tone,
                                          ReportBacking{m_query.period, figure(std::move(movements))});
        };
        const auto balance = [&](std::int64_t minor, sys_days last, Tone tone) {
            return ReportGrids::moneyCell(balanceText(minor, code, m_locale), tone,
                                          ReportGrids::balanceBacking(figure({}), m_books.firstDay, last));
        };
        auto others = ReportFigure::otherMovements();
        others.erase(Movement::transfer);
        const auto transferred = cell.movements[Movement::transfer].netMinor();
        const sys_days first{m_query.period.firstDay()};
        return {{.text = QString::fromStdString(found->name)},
                {.text = QString::fromStdString(code)},
                balance(cell.openingMinor, first - std::chrono::days{1}, Tone::plain),
                moved(transferred, {Movement::transfer}, transferred > 0 ? Tone::incoming : Tone::plain),
                moved(cell.movements.incomeMinor(), ReportFigure::incomeMovements(), Tone::plain),
                moved(cell.movements.expenseMinor(), ReportFigure::expenseMovements(), Tone::plain),
                moved(cell.movements.otherMinor() - transferred, std::move(others), Tone::quiet),
                balance(cell.closingMinor, m_query.period.lastDay(), Tone::strong)};
    }

    [[nodiscard]] std::vector<const LedgerTransaction*> latestEntries() const
    {
        std::vector<const LedgerTransaction*> entries;
        for (const auto& entry : m_books.snapshot->transactions) {
            if (m_query.period.contains(entry.date) && !entry.legs.empty())
                entries.push_back(&entry);
        }
        const auto count = std::min(entriesShown, entries.size());
        const auto isLater = [](const auto* left, const auto* right) {
            return std::pair{left->date, left->createdAt} > std::pair{right->date, right->createdAt};
        };
        std::ranges::partial_sort(entries, entries.begin() + static_cast<std::ptrdiff_t>(count), isLater);
        entries.resize(count);
        return entries;
    }

    /// The movement on an account that the member sees; of several the one that leaves.
    [[nodiscard]] const LedgerLeg& ownLeg(const LedgerTransaction& entry) const
    {
        const auto isSeen = [&](const LedgerLeg& leg) {
            return m_books.snapshot->currentMember.can(AccountAction::view, leg.accountID);
        };
        const auto leaves = [&](const LedgerLeg& leg) { return isSeen(leg) && leg.amountMinor < 0; };
        auto found = std::ranges::find_if(entry.legs, leaves);
        if (found == entry.legs.end())
            found = std::ranges::find_if(entry.legs, isSeen);
        return found == entry.legs.end() ? entry.legs.front() : *found;
    }

    [[nodiscard]] std::vector<ReportGridCell> cells(const LedgerTransaction& entry) const
    {
        const CategoryDirectory directory{m_books.snapshot->categories};
        const auto* category = entry.categoryID ? directory.find(*entry.categoryID) : nullptr;
        const bool isReversal = entry.reversalOf.has_value();
        const auto kind = isReversal ? word("reversal") : movementsText({movementOf(entry.kind)}, m_locale);
        const auto& leg = ownLeg(entry);
        const auto money = movementText(leg.amountMinor, leg.currency, m_locale);
        return {{.text = DayText::nearDay(entry.date, LedgerDay::format(m_query.today), m_locale),
                 .copied = qString(entry.date)},
                {.text = category ? qString(directory.fullPathName(*category, m_locale)) : kind,
                 .beside = QString::fromStdString(entry.note),
                 .entryKind = entry.kind},
                {.text = money.currency, .tone = Tone::quiet},
                ReportGrids::moneyCell(money, leg.amountMinor > 0 ? Tone::incoming : Tone::plain, std::nullopt)};
    }

    const ReportBooks& m_books;
    const ReportQuery& m_query;
    std::string_view m_locale;
};

}

std::expected<ReportOwnGrids, ReportError> ReportOwnGrids::of(const ReportBooks& books, const ReportQuery& query,
                                                              std::string_view locale)
{
    const Own own{books, query, locale};
    auto accounts = own.accounts();
    if (!accounts)
        return std::unexpected(accounts.error());
    return ReportOwnGrids{.accounts = std::move(*accounts), .latest = own.latest()};
}
