#include "LedgerUI/Screens/Ledger/LedgerTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include <QClipboard>
#include <QGuiApplication>

#include "LedgerUI/Components/Table/RowHeads.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Ledger/LedgerBrowser.h"
#include "LedgerUI/Presentation/Ledger/LedgerTableModel.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Screens/Ledger/LedgerCells.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int accountWidth = 182;
constexpr int accountWidthWide = 236;
constexpr int memberWidth = 124;
constexpr int entryOnOneLine = 320;
constexpr int entryMinimum = 120;
constexpr int amountMinimum = 150;
constexpr int codeToDigits = 16;

using Key = LedgerSort::Key;
using Direction = LedgerSort::Direction;

constexpr std::array keys{Key::date, Key::entry, Key::account, Key::member, Key::amount}; // by column

int columnOf(Key key)
{
    return static_cast<int>(std::ranges::find(keys, key) - keys.begin());
}

/// Dates and amounts begin with the latest and the largest, names with the first letter.
Direction firstDirection(Key key)
{
    return key == Key::date || key == Key::amount ? Direction::descending : Direction::ascending;
}

int textWidth(TypeStep step, const QString& text)
{
    // Text is elided by its exact width: less than a pixel too little costs it several characters.
    return static_cast<int>(std::ceil(QFontMetricsF{TypeScale::font(step)}.horizontalAdvance(text)));
}

}

LedgerTable::LedgerTable(QWidget* parent) : LedgerTable{new LedgerTableModel, parent} {}

LedgerTable::LedgerTable(LedgerTableModel* model, QWidget* parent)
    : RowTable{*model,
               [model](const QModelIndex& index, RowDelegate::Density density) {
                   return ledgerCell(*model, index, density);
               },
               parent},
      m_model{model}
{
    setObjectName(QStringLiteral("ledgerTable"));
    m_model->setParent(this);
    heads().setGlyphColumn(LedgerTableModel::entry);
    connect(&heads(), &QHeaderView::sectionClicked, this,
            [this](int column) { Q_EMIT sortWanted(sortedBy(keys[static_cast<std::size_t>(column)])); });
}

void LedgerTable::present(const LedgerBrowser& browser)
{
    m_sort = browser.listing()->query.sort;
    heads().setSortIndicator(columnOf(m_sort.key),
                             m_sort.direction == Direction::ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    m_model->present(browser.listing(), browser.change());
}

void LedgerTable::retranslate()
{
    setAccessibleName(word(ledgerWords(), "table"));
    Q_EMIT m_model->headerDataChanged(Qt::Horizontal, 0, LedgerTableModel::columnCount_ - 1);
}

std::vector<std::uint32_t> LedgerTable::selectedEntries() const
{
    std::vector<std::uint32_t> entries;
    std::ranges::transform(selectedRows(), std::back_inserter(entries),
                           [this](int row) { return m_model->entryAt(row); });
    return entries;
}

void LedgerTable::copySelection() const
{
    const auto rows = selectedRows();
    if (!rows.empty())
        QGuiApplication::clipboard()->setText(m_model->copyText(rows));
}

LedgerSort LedgerTable::sortedBy(Key key) const
{
    if (key != m_sort.key)
        return {key, firstDirection(key)};
    return {key, m_sort.direction == Direction::ascending ? Direction::descending : Direction::ascending};
}

LedgerSort LedgerTable::sortedByNext() const
{
    auto column = static_cast<std::size_t>(columnOf(m_sort.key));
    do
        column = (column + 1) % keys.size();
    while (isColumnHidden(static_cast<int>(column)));
    return {keys[column], firstDirection(keys[column])};
}

/// Room for the widest day of a year; with its year where the rows are not all of this one.
int LedgerTable::dateWidth() const
{
    const auto& listing = m_model->listing();
    if (!listing || listing->rows.empty())
        return 0;
    const auto& locale = listing->book->locale();
    int widest = 0;
    for (const auto* day : {"2026-02-28", "2026-03-28", "2026-05-28", "2026-08-28", "2026-10-28", "2026-11-28"}) {
        const auto text = listing->isOfThisYear ? DayText::shortDay(day, locale) : DayText::shortDate(day, locale);
        widest = std::max(widest, textWidth(TypeStep::body, text));
    }
    return widest + Space::cellPaddingOuter + Space::cellPadding;
}

/// Room for the longest amount of each currency, measured without writing every one of them.
int LedgerTable::amountWidth() const
{
    const auto& listing = m_model->listing();
    int widest = 0;
    for (const auto at : listing ? listing->widest : std::vector<std::uint32_t>{}) {
        for (const auto& amount : amountsOf(*listing->book, at))
            widest = std::max(widest, textWidth(TypeStep::micro, amount.currency) + codeToDigits +
                                          textWidth(TypeStep::body, amount.figure()));
    }
    return std::max(amountMinimum, widest + Space::cellPadding + Space::cellPaddingOuter);
}

void LedgerTable::layOut()
{
    const int room = viewport()->width();
    const auto head = [this](int column) { return horizontalHeader()->sectionSizeHint(column); };
    const int amounts = amountWidth();
    const int dates = std::max(head(LedgerTableModel::date), dateWidth());
    const int members = std::max(head(LedgerTableModel::member), memberWidth);
    const int accountsWide = std::clamp(room / 4, accountWidth, accountWidthWide);
    // One line only where it still leaves room for category and note.
    const bool isWide = room >= Space::oneLineFrom && room - dates - members - accountsWide - amounts >= entryOnOneLine;
    setDensity(isWide ? RowDelegate::Density::oneLine : RowDelegate::Density::twoLines);
    setColumnHidden(LedgerTableModel::member, !isWide);
    const int accounts = isWide ? accountsWide : accountWidth;
    setColumnWidth(LedgerTableModel::date, dates);
    setColumnWidth(LedgerTableModel::account, accounts);
    setColumnWidth(LedgerTableModel::member, members);
    setColumnWidth(LedgerTableModel::amount, amounts);
    setColumnWidth(LedgerTableModel::entry,
                   std::max(entryMinimum, room - dates - accounts - (isWide ? members : 0) - amounts));
}
