#include "LedgerUI/Screens/Ledger/LedgerTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Ledger/LedgerBrowser.h"
#include "LedgerUI/Presentation/Ledger/LedgerTableModel.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Screens/Ledger/LedgerDelegate.h"
#include "LedgerUI/Screens/Ledger/LedgerHeads.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int accountWidth = 182;
constexpr int accountWidthWide = 236;
constexpr int memberWidth = 124;
constexpr int entryOnOneLine = 320;
constexpr int amountMinimum = 150;
constexpr int codeToDigits = 16;

using Key = LedgerSort::Key;
using Direction = LedgerSort::Direction;

constexpr std::array keys{Key::date, Key::entry, Key::account, Key::member, Key::amount};

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

LedgerTable::LedgerTable(QWidget* parent) : QTableView{parent}
{
    setObjectName(QStringLiteral("ledgerTable"));
    m_model = new LedgerTableModel(this);
    m_delegate = new LedgerDelegate(*m_model, this);
    setModel(m_model);
    setItemDelegate(m_delegate);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setMouseTracking(true);
    setFrameShape(NoFrame);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setContextMenuPolicy(Qt::CustomContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    auto* heads = new LedgerHeads(this);
    setHorizontalHeader(heads);
    connect(heads, &QHeaderView::sectionClicked, this, &LedgerTable::sortBy);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &LedgerTable::selectionMoved);
    connect(this, &QTableView::doubleClicked, this, &LedgerTable::opened);
    connect(&Theme::current(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
}

void LedgerTable::present(const LedgerBrowser& browser)
{
    const auto kept = keep();
    m_sort = browser.sort();
    m_delegate->setDaysGrouped(m_sort.key == Key::date);
    const auto column = std::ranges::find(keys, m_sort.key) - keys.begin();
    horizontalHeader()->setSortIndicator(
        static_cast<int>(column), m_sort.direction == Direction::ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    m_model->present(browser.book(), browser.rows(), browser.today());
    m_dateWidth = dateWidth();
    m_amountWidth = amountWidth();
    layOut();
    restore(kept);
}

void LedgerTable::retranslate(std::string_view locale)
{
    setAccessibleName(wordIn(locale, ledgerWords(), "table"));
    Q_EMIT m_model->headerDataChanged(Qt::Horizontal, 0, LedgerTableModel::columnCount_ - 1);
}

std::vector<std::string> LedgerTable::selectedIDs() const
{
    std::vector<std::string> ids;
    for (const auto at : selectedEntries())
        ids.push_back(m_model->book()->transaction(at).id);
    return ids;
}

std::vector<std::uint32_t> LedgerTable::selectedEntries() const
{
    std::vector<std::uint32_t> entries;
    std::ranges::transform(selectedRows(), std::back_inserter(entries),
                           [this](int row) { return m_model->entryAt(row); });
    return entries;
}

/// The selection's own ranges are read, as asking it row by row takes the square of a large selection's time.
std::vector<int> LedgerTable::selectedRows() const
{
    std::vector<int> rows;
    for (const auto& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    }
    std::ranges::sort(rows);
    const auto repeated = std::ranges::unique(rows);
    rows.erase(repeated.begin(), repeated.end());
    return rows;
}

/// Selects ascending rows, neighbours as one range.
void LedgerTable::selectRows(const std::vector<int>& rows)
{
    QItemSelection selection;
    for (std::size_t first = 0; first < rows.size();) {
        auto last = first;
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        selection.append({m_model->index(rows[first], 0), m_model->index(rows[last], 0)});
        first = last + 1;
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool LedgerTable::select(std::string_view id)
{
    const int row = m_model->rowOf(id);
    if (row < 0)
        return false;
    selectionModel()->setCurrentIndex(m_model->index(row, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(m_model->index(row, 0));
    return true;
}

void LedgerTable::copySelection() const
{
    const auto rows = selectedRows();
    if (!rows.empty())
        QGuiApplication::clipboard()->setText(m_model->copyText(rows));
}

LedgerTable::Kept LedgerTable::keep() const
{
    Kept kept{.book = m_model->bookPointer(), .selected = selectedEntries()};
    if (currentIndex().isValid())
        kept.current = m_model->entryAt(currentIndex().row());
    if (const int top = rowAt(0); top >= 0 && verticalScrollBar()->value() > 0)
        kept.top = m_model->entryAt(top);
    return kept;
}

void LedgerTable::restore(const Kept& kept)
{
    const auto places = m_model->places();
    const auto rowOf = [&](std::uint32_t at) {
        if (at == LedgerBook::none)
            return -1;
        const auto now =
            kept.book == m_model->bookPointer() ? at : m_model->book()->find(kept.book->transaction(at).id);
        return now == LedgerBook::none ? -1 : places[now];
    };
    std::vector<int> rows;
    std::ranges::transform(kept.selected, std::back_inserter(rows), rowOf);
    std::erase(rows, -1);
    std::ranges::sort(rows);
    if (rows != selectedRows())
        selectRows(rows);
    if (const int row = rowOf(kept.current); row >= 0 && row != currentIndex().row())
        selectionModel()->setCurrentIndex(m_model->index(row, 0), QItemSelectionModel::NoUpdate);
    if (const int row = rowOf(kept.top); row >= 0 && rowAt(0) != row)
        scrollTo(m_model->index(row, 0), PositionAtTop);
    Q_EMIT selectionMoved();
}

/// Room for the widest day of a year; with its year where the rows are not all of this one.
int LedgerTable::dateWidth() const
{
    const auto* book = m_model->book();
    if (!book || m_model->rows().empty())
        return 0;
    const auto& rows = m_model->rows();
    const auto years = [&](auto at) { return book->entry(at).day / 10000; };
    const auto [least, most] = std::ranges::minmax(rows, {}, years);
    const bool isPlain = years(least) == years(most) &&
                         m_model->row(0).day == DayText::shortDay(book->transaction(rows[0]).date, book->locale());
    int widest = 0;
    for (const auto* day : {"2026-02-28", "2026-03-28", "2026-05-28", "2026-08-28", "2026-10-28", "2026-11-28"}) {
        const auto text = isPlain ? DayText::shortDay(day, book->locale()) : DayText::shortDate(day, book->locale());
        widest = std::max(widest, textWidth(TypeStep::body, text));
    }
    return widest + Space::cellPaddingOuter + Space::cellPadding;
}

/// Room for the longest amount of each currency, measured without writing every one of them.
int LedgerTable::amountWidth() const
{
    const auto* book = m_model->book();
    if (!book)
        return amountMinimum;
    std::vector<std::uint32_t> longest(book->currencies().size(), LedgerBook::none);
    std::vector<std::uint64_t> most(longest.size(), 0);
    for (const auto at : m_model->rows()) {
        for (const auto& leg : book->legs(at)) {
            const auto bits = static_cast<std::uint64_t>(leg.amountMinor);
            const auto magnitude = leg.amountMinor < 0 ? std::uint64_t{0} - bits : bits;
            if (longest[leg.currency] == LedgerBook::none || magnitude > most[leg.currency]) {
                most[leg.currency] = magnitude;
                longest[leg.currency] = at;
            }
        }
    }
    int widest = 0;
    for (const auto at : longest) {
        if (at == LedgerBook::none)
            continue;
        for (const auto& amount : amountsOf(*book, at))
            widest = std::max(widest, textWidth(TypeStep::micro, amount.currency) + codeToDigits +
                                          textWidth(TypeStep::body, amount.figure()));
    }
    return std::max(amountMinimum, widest + Space::cellPadding + Space::cellPaddingOuter);
}

void LedgerTable::layOut()
{
    const int room = viewport()->width();
    const auto head = [this](int column) { return horizontalHeader()->sectionSizeHint(column); };
    const int dates = std::max(head(LedgerTableModel::date), m_dateWidth);
    const int members = std::max(head(LedgerTableModel::member), memberWidth);
    const int accountsWide = std::clamp(room / 4, accountWidth, accountWidthWide);
    // One line only where it still leaves room for category and note.
    const bool isWide =
        room >= Space::oneLineFrom && room - dates - members - accountsWide - m_amountWidth >= entryOnOneLine;
    const auto density = isWide ? LedgerDelegate::Density::oneLine : LedgerDelegate::Density::twoLines;
    m_delegate->setDensity(density);
    const int height = m_delegate->rowHeight();
    if (verticalHeader()->defaultSectionSize() != height)
        verticalHeader()->setDefaultSectionSize(height);
    setColumnHidden(LedgerTableModel::member, !isWide);
    const int accounts = isWide ? accountsWide : accountWidth;
    setColumnWidth(LedgerTableModel::date, dates);
    setColumnWidth(LedgerTableModel::account, accounts);
    setColumnWidth(LedgerTableModel::member, members);
    setColumnWidth(LedgerTableModel::amount, m_amountWidth);
    setColumnWidth(LedgerTableModel::entry,
                   std::max(120, room - dates - accounts - (isWide ? members : 0) - m_amountWidth));
}

void LedgerTable::hover(int row)
{
    m_delegate->setHoveredRow(row);
    viewport()->update();
}

void LedgerTable::sortBy(int column)
{
    const auto key = keys[static_cast<std::size_t>(column)];
    auto direction = firstDirection(key);
    if (key == m_sort.key)
        direction = m_sort.direction == Direction::ascending ? Direction::descending : Direction::ascending;
    Q_EMIT sortWanted({key, direction});
}

void LedgerTable::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    layOut();
}

void LedgerTable::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
        return;
    }
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->modifiers().testFlag(Qt::ControlModifier) && currentIndex().isValid()) {
        Q_EMIT opened();
        return;
    }
    QTableView::keyPressEvent(event);
}

void LedgerTable::mouseMoveEvent(QMouseEvent* event)
{
    hover(rowAt(event->position().toPoint().y()));
    QTableView::mouseMoveEvent(event);
}

void LedgerTable::leaveEvent(QEvent* event)
{
    hover(-1);
    QTableView::leaveEvent(event);
}

void LedgerTable::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOut();
}
