#include "LedgerUI/Presentation/Ledger/Rows/LedgerTableModel.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Table/RowPatch.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

constexpr std::size_t madeRowsKept = 512;

std::string_view columnKey(int section)
{
    static constexpr std::string_view keys[] = {"column.date",   "column.entry",  "column.account",
                                                "column.member", "column.amount", "column.balance"};
    return keys[static_cast<std::size_t>(section)];
}

}

void LedgerTableModel::present(LedgerListingPointer listing, const RowChange& change)
{
    if (listing == m_listing)
        return;
    m_next = std::move(listing);
    forgetMade();
    presentBalances(m_next->statement.has_value());
    follow(change);
    forgetMade(); // a view may have asked for rows in the middle of the change
    m_next.reset();
}

void LedgerTableModel::forgetMade()
{
    m_made.clear();
    m_madeDays.clear();
}

void LedgerTableModel::presentBalances(bool areThere)
{
    if (areThere == m_hasBalances)
        return;
    if (areThere)
        beginInsertColumns({}, balance, balance);
    else
        beginRemoveColumns({}, balance, balance);
    m_hasBalances = areThere;
    if (areThere)
        endInsertColumns();
    else
        endRemoveColumns();
}

std::vector<MoneyText> LedgerTableModel::balancesAt(int row) const
{
    std::vector<MoneyText> balances;
    if (isHeadAt(row))
        return balances;
    const auto* statement = m_listing && m_listing->statement ? &*m_listing->statement : nullptr;
    const auto at = statement ? m_listing->places[entryAt(row)] : -1;
    if (at < 0)
        return {};
    for (const auto& each : statement->after(static_cast<std::size_t>(at)))
        balances.push_back(balanceText(each.minor, book()->currencies().id(each.currency), book()->locale()));
    return balances;
}

void LedgerTableModel::drop(const RowChange::Range& rows)
{
    RowPatch::drop(rows, m_lines);
}

void LedgerTableModel::adopt(const RowChange& change)
{
    m_lines = RowPatch::known(change, m_next->lines);
    m_listing = m_next;
    m_today = LedgerDay::format(m_listing->query.today);
    forgetMade();
}

void LedgerTableModel::insert(const RowChange::Range& rows)
{
    RowPatch::insert(rows, m_lines, m_listing->lines);
}

const LedgerRow& LedgerTableModel::row(int row) const
{
    const auto at = entryAt(row);
    if (const auto found = m_made.find(at); found != m_made.end())
        return found->second;
    if (m_made.size() >= madeRowsKept)
        m_made.clear();
    return m_made.emplace(at, rowFor(*book(), at, m_today)).first->second;
}

const LedgerDayRow& LedgerTableModel::dayRow(int row) const
{
    const auto day = lineAt(row).day();
    if (const auto found = m_madeDays.find(day); found != m_madeDays.end())
        return found->second;
    if (m_madeDays.size() >= madeRowsKept)
        m_madeDays.clear();
    const auto* head = m_listing->head(day);
    require(head != nullptr, "the line of a head belongs to a day of the listing");
    return m_madeDays.emplace(day, dayRowFor(*m_listing, *head)).first->second;
}

std::uint32_t LedgerTableModel::dayAt(int row) const
{
    const auto line = lineAt(row);
    return line.isHead() ? line.day() : book()->entry(line.entry()).day;
}

bool LedgerTableModel::repeatsDay(int row) const
{
    return row > 0 && dayAt(row) == dayAt(row - 1);
}

/// A head has no identity of its own: it is never chosen.
std::string_view LedgerTableModel::idAt(int row) const
{
    if (isHeadAt(row))
        return {};
    return book()->transaction(entryAt(row)).id;
}

int LedgerTableModel::rowOf(std::string_view id) const
{
    return m_listing ? m_listing->lineOf(id) : -1;
}

QString LedgerTableModel::copyText(const std::vector<int>& rows) const
{
    const auto head = [&](std::string_view key) { return wordIn(book()->locale(), ledgerWords(), key); };
    QStringList heads;
    for (const auto* key :
         {"column.date", "column.entry", "detail.note", "column.account", "column.destination", "column.member"})
        heads << head(key);
    std::size_t amounts = 0;
    std::size_t balances = 0;
    for (const int each : rows) {
        amounts = std::max(amounts, row(each).amounts.size());
        balances = std::max(balances, balancesAt(each).size());
    }
    for (std::size_t each = 0; each < amounts; ++each)
        heads << head("filter.currencies") << head("column.amount");
    for (std::size_t each = 0; each < balances; ++each)
        heads << head("filter.currencies") << head("column.balance");
    auto text = heads.join(QLatin1Char('\t')) + QLatin1Char('\n');
    for (const int each : rows) {
        const auto& shown = row(each);
        QStringList cells{QString::fromStdString(book()->transaction(entryAt(each)).date),
                          shown.title,
                          shown.note,
                          shown.account,
                          shown.destination,
                          shown.member};
        for (const auto& money : shown.amounts)
            cells << money.currency << money.plain();
        const auto after = balancesAt(each);
        for (auto missing = after.empty() ? 0 : amounts - shown.amounts.size(); missing > 0; --missing)
            cells << QString{} << QString{};
        for (const auto& money : after)
            cells << money.currency << money.plain();
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

int LedgerTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

int LedgerTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columnCount_ - (m_hasBalances ? 0 : 1);
}

QVariant LedgerTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return text(index.row(), index.column());
    if (role == Qt::AccessibleTextRole)
        return spoken(index.row(), index.column());
    return {};
}

QVariant LedgerTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || !m_listing || section < 0 || section >= columnCount())
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(
            Qt::Alignment{Qt::AlignVCenter | (section >= amount ? Qt::AlignRight : Qt::AlignLeft)});
    if (role == Qt::DisplayRole)
        return wordIn(book()->locale(), ledgerWords(), columnKey(section));
    return {};
}

QString LedgerTableModel::text(int row, int column) const
{
    if (isHeadAt(row))
        return column == date ? dayRow(row).day : QString{};
    const auto& shown = this->row(row);
    switch (column) {
    case date:
        return shown.day;
    case entry:
        return shown.title;
    case account:
        return shown.account;
    case member:
        return shown.member;
    case amount: {
        QStringList lines;
        for (const auto& each : shown.amounts)
            lines << each.text();
        return lines.join(QLatin1Char('\n'));
    }
    case balance: {
        QStringList lines;
        for (const auto& each : balancesAt(row))
            lines << each.text();
        return lines.join(QLatin1Char('\n'));
    }
    default:
        return {};
    }
}

QString LedgerTableModel::spoken(int row, int column) const
{
    if (isHeadAt(row))
        return dayRow(row).spoken;
    const auto& shown = this->row(row);
    const auto& locale = book()->locale();
    switch (column) {
    case date:
        return DayText::longDay(book()->transaction(entryAt(row)).date, locale);
    case entry:
        return listed(
            {shown.title == shown.kindTitle ? QString{} : shown.kindTitle, shown.title,
             shown.isReversed ? wordIn(locale, ledgerWords(), "reversed") : QString{}, shown.note,
             shown.receiptCount ? countedIn(locale, ledgerWords(), "receipts", shown.receiptCount) : QString{}},
            locale);
    case account:
        return listed({shown.account, shown.destination.isEmpty()
                                          ? QString{}
                                          : wordIn(locale, ledgerWords(), "to", {shown.destination.toStdString()})},
                      locale);
    case amount: {
        QStringList amounts;
        for (const auto& each : shown.amounts)
            amounts << each.spoken;
        return listed(amounts, locale);
    }
    case balance: {
        QStringList amounts;
        for (const auto& each : balancesAt(row))
            amounts << each.spoken;
        return listed(amounts, locale);
    }
    default:
        return text(row, column);
    }
}
