#include "LedgerUI/Screens/Ledger/LedgerTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include <QClipboard>
#include <QGuiApplication>
#include <QScopedValueRollback>

#include "LedgerUI/Components/Table/RowHeads.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerTableModel.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Ledger/LedgerCells.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int accountWidth = 182;
constexpr int accountWidthWide = 236;
constexpr int accountWidthBesideBalances = 124;
constexpr int accountWidthAtLeast = 84;
constexpr int memberWidth = 124;
constexpr int entryOnOneLine = 320;
constexpr int entryMinimum = 120;
constexpr int amountMinimum = 150;
constexpr int codeToDigits = 16;
constexpr int narrowest = 48; // however a person draws a column

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
    connect(&heads(), &QHeaderView::sectionClicked, this, [this](int column) {
        presentSort(); // the toolkit has marked the head already
        if (column < static_cast<int>(keys.size()))
            Q_EMIT sortWanted(sortedBy(keys[static_cast<std::size_t>(column)]));
    });
    heads().setSectionResizeMode(QHeaderView::Interactive);
    heads().setSectionResizeMode(LedgerTableModel::entry, QHeaderView::Fixed); // takes what the others leave
    connect(&heads(), &QHeaderView::sectionResized, this, [this](int column, int /*before*/, int width) {
        if (m_isLayingOut || width == 0)
            return;
        m_widths[column] = width;
        layOut();
    });
    connect(&heads(), &QHeaderView::sectionHandleDoubleClicked, this, [this](int column) {
        m_widths.erase(column);
        layOut();
    });
    heads().setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&heads(), &QWidget::customContextMenuRequested, this,
            [this](QPoint place) { Q_EMIT columnsWanted(heads().viewport()->mapToGlobal(place)); });
    // Rows are chosen whole, with a column that has just come.
    connect(m_model, &QAbstractItemModel::columnsInserted, this, [this] {
        selectionModel()->select(selectionModel()->selection(),
                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
    });
}

void LedgerTable::present(const LedgerBrowser& browser)
{
    m_sort = browser.listing()->query.sort;
    presentSort();
    m_model->present(browser.listing(), browser.change());
}

void LedgerTable::presentSort()
{
    heads().setSortIndicator(columnOf(m_sort.key),
                             m_sort.direction == Direction::ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
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

bool LedgerTable::chooseAll(const std::vector<std::string>& ids)
{
    std::vector<int> rows;
    std::ranges::transform(ids, std::back_inserter(rows), [this](const std::string& id) { return m_model->rowOf(id); });
    std::erase(rows, -1);
    if (rows.empty())
        return false;
    std::ranges::sort(rows);
    const auto repeated = std::ranges::unique(rows);
    rows.erase(repeated.begin(), repeated.end());
    const auto top = m_model->index(rows.front(), 0);
    selectionModel()->setCurrentIndex(top, QItemSelectionModel::NoUpdate);
    selectRows(rows);
    scrollTo(top);
    return true;
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
    if (!listing)
        return amountMinimum;
    int widest = 0;
    for (const auto at : listing->widest) {
        for (const auto& amount : amountsOf(*listing->book, at))
            widest = std::max(widest, textWidth(TypeStep::micro, amount.currency) + codeToDigits +
                                          textWidth(TypeStep::body, amount.figure()));
    }
    return std::max(amountMinimum, widest + Space::cellPadding + Space::cellPaddingOuter);
}

/// Room for the largest balance of each currency.
int LedgerTable::balanceWidth() const
{
    const auto& listing = m_model->listing();
    if (!m_model->hasBalances() || !listing || !listing->statement)
        return 0;
    int widest = horizontalHeader()->sectionSizeHint(LedgerTableModel::balance);
    for (const auto& each : listing->statement->widest) {
        const auto money =
            balanceText(each.minor, listing->book->currencies().id(each.currency), listing->book->locale());
        widest = std::max(widest, textWidth(TypeStep::micro, money.currency) + codeToDigits +
                                      textWidth(TypeStep::body, money.figure()) + Space::cellPadding +
                                      Space::cellPaddingOuter);
    }
    return widest;
}

int LedgerTable::chosenWidth(int column, int usual) const
{
    const auto found = m_widths.find(column);
    return found == m_widths.end() ? usual : std::max(found->second, narrowest);
}

bool LedgerTable::isColumnWanted(int column) const
{
    const auto found = m_wanted.find(column);
    return found == m_wanted.end() ? !isColumnHidden(column) : found->second;
}

void LedgerTable::setColumnWanted(int column, bool isWanted)
{
    m_wanted[column] = isWanted;
    layOut();
}

void LedgerTable::resetColumns()
{
    m_wanted.clear();
    m_widths.clear();
    layOut();
}

void LedgerTable::layOut()
{
    const QScopedValueRollback quiet{m_isLayingOut, true};
    const auto isWanted = [this](int column, bool usually) {
        const auto found = m_wanted.find(column);
        return found == m_wanted.end() ? usually : found->second;
    };
    const int room = viewport()->width();
    const auto head = [this](int column) { return horizontalHeader()->sectionSizeHint(column); };
    const bool hasBalances = m_model->hasBalances() && isWanted(LedgerTableModel::balance, true);
    const int balances = hasBalances ? chosenWidth(LedgerTableModel::balance, balanceWidth()) : 0;
    const int amounts = chosenWidth(LedgerTableModel::amount, amountWidth()) + balances;
    const int dates = chosenWidth(LedgerTableModel::date, std::max(head(LedgerTableModel::date), dateWidth()));
    const int members = chosenWidth(LedgerTableModel::member, std::max(head(LedgerTableModel::member), memberWidth));
    const int accountsWide = std::clamp(room / 4, accountWidth, accountWidthWide);
    // One line only where it still leaves room for category and note.
    const bool isWide = room >= Space::oneLineFrom && room - dates - members - accountsWide - amounts >= entryOnOneLine;
    setDensity(isWide ? RowDelegate::Density::oneLine : RowDelegate::Density::twoLines);
    const bool hasMembers = isWanted(LedgerTableModel::member, isWide);
    setColumnHidden(LedgerTableModel::member, !hasMembers);
    if (m_model->hasBalances())
        setColumnHidden(LedgerTableModel::balance, !hasBalances);
    // Beside balances every row is of the one account: its name gives way to the entry.
    const int accountsUsual = isWide ? accountsWide : hasBalances ? accountWidthBesideBalances : accountWidth;
    // And names give way to amounts, of which nothing may be cut.
    const int rest = room - dates - (hasMembers ? members : 0) - amounts - entryMinimum;
    const bool hasAccounts = isWanted(LedgerTableModel::account, rest >= accountWidthAtLeast);
    const int accountsNow = std::clamp(rest, accountWidthAtLeast, accountsUsual);
    const int accounts = hasAccounts ? chosenWidth(LedgerTableModel::account, accountsNow) : 0;
    setColumnHidden(LedgerTableModel::account, !hasAccounts);
    setColumnWidth(LedgerTableModel::date, dates);
    if (hasAccounts)
        setColumnWidth(LedgerTableModel::account, accounts);
    if (hasMembers)
        setColumnWidth(LedgerTableModel::member, members);
    setColumnWidth(LedgerTableModel::amount, amounts - balances);
    if (hasBalances)
        setColumnWidth(LedgerTableModel::balance, balances);
    setColumnWidth(LedgerTableModel::entry,
                   std::max(entryMinimum, room - dates - accounts - (hasMembers ? members : 0) - amounts));
}
