#include "LedgerUI/Presentation/Ledger/LedgerTableModel.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/ListedText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr std::size_t madeRowsKept = 512;
constexpr std::size_t patchesAnnounced = 64; // more ranges than these are cheaper as one reset

struct Range {
    std::size_t first;
    std::size_t last;
};

/// The maximal runs of places for which `holds` is true.
template <class Holds>
std::vector<Range> ranges(std::size_t size, Holds&& holds)
{
    std::vector<Range> result;
    for (std::size_t at = 0; at < size; ++at) {
        if (!holds(at))
            continue;
        if (!result.empty() && result.back().last + 1 == at)
            result.back().last = at;
        else
            result.push_back({at, at});
    }
    return result;
}

std::string_view columnKey(int section)
{
    static constexpr std::string_view keys[] = {"column.date", "column.entry", "column.account", "column.member",
                                                "column.amount"};
    return keys[static_cast<std::size_t>(section)];
}

}

void LedgerTableModel::present(LedgerBookPointer book, std::vector<std::uint32_t> rows,
                               std::chrono::year_month_day today)
{
    m_today = today;
    m_made.clear();
    if (m_book && book) {
        auto carried = carriedOver(*book);
        std::vector<std::uint32_t> places(book->size(), LedgerBook::none);
        for (std::uint32_t at = 0; at < rows.size(); ++at)
            places[rows[at]] = at;
        if (patch(book, carried, places, rows) || reorder(book, carried, places, rows)) {
            m_made.clear();
            if (!m_rows.empty())
                Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount_ - 1));
            return;
        }
    }
    beginResetModel();
    adopt(std::move(book), std::move(rows));
    endResetModel();
}

std::vector<std::uint32_t> LedgerTableModel::carriedOver(const LedgerBook& book) const
{
    if (&book == m_book.get())
        return m_rows;
    std::vector<std::uint32_t> carried(m_rows.size());
    // Entries come and go at few places: most stand as far from their old place as the one before.
    std::uint32_t shift = 0; // forward, or backward past zero
    std::ranges::transform(m_rows, carried.begin(), [&](std::uint32_t at) {
        const auto& id = m_book->transaction(at).id;
        const std::uint32_t guess = at + shift;
        if (guess < book.size() && book.transaction(guess).id == id)
            return guess;
        const auto found = book.find(id);
        if (found != LedgerBook::none)
            shift = found - at;
        return found;
    });
    return carried;
}

void LedgerTableModel::adopt(LedgerBookPointer book, std::vector<std::uint32_t> rows)
{
    m_book = std::move(book);
    m_rows = std::move(rows);
    m_made.clear();
}

/// The same entries in another order.
bool LedgerTableModel::reorder(const LedgerBookPointer& book, std::vector<std::uint32_t>& carried,
                               const std::vector<std::uint32_t>& places, std::vector<std::uint32_t>& rows)
{
    const auto placed = [&](std::uint32_t at) { return at != LedgerBook::none && places[at] != LedgerBook::none; };
    if (carried.size() != rows.size() || !std::ranges::all_of(carried, placed))
        return false;
    Q_EMIT layoutAboutToBeChanged();
    const auto before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const auto& each : before)
        after.append(index(static_cast<int>(places[carried[static_cast<std::size_t>(each.row())]]), each.column()));
    adopt(book, std::move(rows));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
    return true;
}

/// The entries that stay keep their order: the others go and come around them.
bool LedgerTableModel::patch(const LedgerBookPointer& book, std::vector<std::uint32_t>& carried,
                             const std::vector<std::uint32_t>& places, const std::vector<std::uint32_t>& rows)
{
    const auto stays = [&](std::size_t at) {
        return carried[at] != LedgerBook::none && places[carried[at]] != LedgerBook::none;
    };
    std::vector<std::uint32_t> staying;
    std::vector<bool> wasShown(rows.size());
    for (std::size_t at = 0; at < carried.size(); ++at) {
        if (!stays(at))
            continue;
        if (!staying.empty() && places[staying.back()] > places[carried[at]])
            return false;
        staying.push_back(carried[at]);
        wasShown[places[carried[at]]] = true;
    }
    const auto gone = ranges(carried.size(), [&](std::size_t at) { return !stays(at); });
    const auto fresh = ranges(rows.size(), [&](std::size_t at) { return !wasShown[at]; });
    if (gone.size() + fresh.size() > patchesAnnounced)
        return false;

    for (auto range = gone.rbegin(); range != gone.rend(); ++range) {
        beginRemoveRows({}, static_cast<int>(range->first), static_cast<int>(range->last));
        m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(range->first),
                     m_rows.begin() + static_cast<std::ptrdiff_t>(range->last) + 1);
        endRemoveRows();
    }
    adopt(book, std::move(staying));
    for (const auto& range : fresh) {
        beginInsertRows({}, static_cast<int>(range.first), static_cast<int>(range.last));
        m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(range.first),
                      rows.begin() + static_cast<std::ptrdiff_t>(range.first),
                      rows.begin() + static_cast<std::ptrdiff_t>(range.last) + 1);
        endInsertRows();
    }
    return true;
}

const LedgerRow& LedgerTableModel::row(int row) const
{
    const auto at = entryAt(row);
    if (const auto found = m_made.find(at); found != m_made.end())
        return found->second;
    if (m_made.size() >= madeRowsKept)
        m_made.clear();
    return m_made.emplace(at, rowFor(*m_book, at, m_today)).first->second;
}

bool LedgerTableModel::repeatsDay(int row) const
{
    return row > 0 && m_book->entry(entryAt(row)).day == m_book->entry(entryAt(row - 1)).day;
}

std::vector<int> LedgerTableModel::places() const
{
    std::vector<int> places(m_book ? m_book->size() : 0, -1);
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        places[m_rows[row]] = static_cast<int>(row);
    return places;
}

int LedgerTableModel::rowOf(std::string_view id) const
{
    const auto at = m_book ? m_book->find(id) : LedgerBook::none;
    const auto found = std::ranges::find(m_rows, at);
    return at == LedgerBook::none || found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

QString LedgerTableModel::copyText(const std::vector<int>& rows) const
{
    QString text;
    for (const int each : rows) {
        const auto& shown = row(each);
        QStringList cells{QString::fromStdString(m_book->transaction(entryAt(each)).date),
                          shown.title,
                          shown.note,
                          shown.account,
                          shown.destination,
                          shown.member};
        for (const auto& money : shown.amounts)
            cells << money.currency << money.plain();
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

int LedgerTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int LedgerTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columnCount_;
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
    if (orientation == Qt::Vertical || !m_book || section < 0 || section >= columnCount_)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(
            Qt::Alignment{Qt::AlignVCenter | (section == amount ? Qt::AlignRight : Qt::AlignLeft)});
    if (role == Qt::DisplayRole)
        return wordIn(m_book->locale(), ledgerWords(), columnKey(section));
    return {};
}

QString LedgerTableModel::text(int row, int column) const
{
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
    default:
        return {};
    }
}

QString LedgerTableModel::spoken(int row, int column) const
{
    const auto& shown = this->row(row);
    const auto& locale = m_book->locale();
    switch (column) {
    case date:
        return DayText::longDay(m_book->transaction(entryAt(row)).date, locale);
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
    default:
        return text(row, column);
    }
}
