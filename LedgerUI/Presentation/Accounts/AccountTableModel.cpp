#include "LedgerUI/Presentation/Accounts/AccountTableModel.h"

#include <utility>

#include "LedgerUI/Presentation/Table/RowPatch.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

void AccountTableModel::present(AccountListingPointer listing)
{
    if (listing == m_listing)
        return;
    std::vector<int> moved;
    moved.reserve(m_rows.size());
    for (const auto& row : m_rows)
        moved.push_back(listing->rowOf(row.id));
    const auto change = rowChange(std::move(moved), static_cast<int>(listing->rows.size()));
    m_next = std::move(listing);
    follow(change);
    m_next.reset();
}

void AccountTableModel::drop(const RowChange::Range& rows)
{
    RowPatch::drop(rows, m_rows);
}

void AccountTableModel::adopt(const RowChange& change)
{
    m_rows = RowPatch::known(change, m_next->rows);
    m_listing = m_next;
}

void AccountTableModel::insert(const RowChange::Range& rows)
{
    RowPatch::insert(rows, m_rows, m_listing->rows);
}

int AccountTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int AccountTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columnCount_;
}

QVariant AccountTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return text(row(index.row()), index.column());
    if (role == Qt::AccessibleTextRole)
        return spoken(row(index.row()), index.column());
    return {};
}

QVariant AccountTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || !m_listing || section < 0 || section >= columnCount_)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(
            Qt::Alignment{Qt::AlignVCenter | (section >= incoming ? Qt::AlignRight : Qt::AlignLeft)});
    if (role != Qt::DisplayRole)
        return {};
    const auto& locale = m_listing->locale;
    const auto month = DayText::shortMonth(m_listing->book->today().month(), locale).toStdString();
    switch (section) {
    case account:
        return wordIn(locale, accountWords(), "column.account");
    case incoming:
        return wordIn(locale, accountWords(), "column.in", {month});
    case outgoing:
        return wordIn(locale, accountWords(), "column.out", {month});
    case balance:
        return wordIn(locale, accountWords(), "column.balance");
    default:
        return {}; // a code needs no head
    }
}

QString AccountTableModel::text(const AccountRow& row, int column) const
{
    switch (column) {
    case account:
        return row.name;
    case currency:
        return row.currency;
    case incoming:
        return row.isHead ? QString{} : row.incoming.figure();
    case outgoing:
        return row.isHead ? QString{} : row.outgoing.figure();
    case balance:
        return row.isHead ? QString{} : row.balance.figure();
    default:
        return {};
    }
}

QString AccountTableModel::spoken(const AccountRow& row, int column) const
{
    const auto said = [](const MoneyText& money) { return money.isKnown() ? money.spoken : money.digits; };
    switch (row.isHead ? account : column) {
    case incoming:
        return said(row.incoming);
    case outgoing:
        return said(row.outgoing);
    case balance:
        return said(row.balance);
    default:
        return text(row, row.isHead && column != account ? columnCount_ : column);
    }
}
