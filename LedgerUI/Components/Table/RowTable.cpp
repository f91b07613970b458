#include "LedgerUI/Components/Table/RowTable.h"

#include <algorithm>
#include <utility>

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include "LedgerUI/Components/Table/RowHeads.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

// Qt follows a larger selection cell by cell, which takes longer than a frame: it is put back as a whole instead.
constexpr std::size_t followedRows = 500;
constexpr int ringWidth = 2;

}

RowTable::RowTable(RowModel& model, RowDelegate::CellAt cellAt, QWidget* parent) : QTableView{parent}, m_model{&model}
{
    m_delegate = new RowDelegate(std::move(cellAt), this);
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
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    m_heads = new RowHeads(this);
    setHorizontalHeader(m_heads);
    m_heads->setSortIndicatorShown(true); // which a table takes from its heads that does not sort by itself
    connect(m_model, &RowModel::aboutToChange, this, &RowTable::keep);
    connect(m_model, &RowModel::changed, this, &RowTable::restore);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_isChanging)
            Q_EMIT selectionMoved();
    });
    connect(this, &QTableView::doubleClicked, this, &RowTable::opened);
    connect(&Theme::current(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
}

/// The selection's own ranges are read, as asking it row by row takes the square of a large selection's time.
std::vector<int> RowTable::selectedRows() const
{
    std::vector<int> rows;
    for (const auto& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (!m_model->isHeadAt(row))
                rows.push_back(row);
        }
    }
    if (!std::ranges::is_sorted(rows))
        std::ranges::sort(rows);
    const auto repeated = std::ranges::unique(rows);
    rows.erase(repeated.begin(), repeated.end());
    return rows;
}

std::vector<std::string> RowTable::selectedIDs() const
{
    std::vector<std::string> ids;
    for (const int row : selectedRows())
        ids.emplace_back(m_model->idAt(row));
    return ids;
}

bool RowTable::choose(std::string_view id)
{
    const int row = m_model->rowOf(id);
    if (row < 0)
        return false;
    selectionModel()->setCurrentIndex(m_model->index(row, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(m_model->index(row, 0));
    return true;
}

void RowTable::enter()
{
    setFocus(Qt::OtherFocusReason);
    if (!selectionModel()->hasSelection())
        chooseFirst();
}

void RowTable::chooseFirst()
{
    if (const int first = firstChoosable(); first >= 0)
        selectionModel()->setCurrentIndex(m_model->index(first, 0),
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

/// The uppermost row that is no head; -1 when there is none.
int RowTable::firstChoosable() const
{
    return choosableFrom(0, 1);
}

/// The next row from this one on, in steps of 1 or -1, that is no head; -1 when there is none.
int RowTable::choosableFrom(int row, int step) const
{
    const int rows = m_model->rowCount();
    while (row >= 0 && row < rows && m_model->isHeadAt(row))
        row += step;
    return row >= 0 && row < rows ? row : -1;
}

void RowTable::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    if (hint == EnsureVisible && index.row() > 0 && m_model->isHeadAt(index.row() - 1))
        QTableView::scrollTo(index.siblingAtRow(index.row() - 1), hint);
    QTableView::scrollTo(index, hint);
    const int hidden = index.column() > 0 ? frozenWidth() - columnViewportPosition(index.column()) : 0;
    if (hidden > 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - hidden);
}

void RowTable::freezeFirstColumn()
{
    m_isFrozen = true;
    m_heads->freezeFirst();
    setHorizontalScrollMode(ScrollPerPixel);
    // Qt moves what is painted already, the frozen column with it.
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        viewport()->update();
        m_heads->viewport()->update();
    });
}

/// How much of the left edge the first column takes while it stands over others.
int RowTable::frozenWidth() const
{
    return m_isFrozen && horizontalHeader()->offset() > 0 ? columnWidth(0) : 0;
}

QModelIndex RowTable::indexAt(const QPoint& place) const
{
    const int row = rowAt(place.y());
    return place.x() < frozenWidth() && row >= 0 ? m_model->index(row, 0) : QTableView::indexAt(place);
}

void RowTable::paintFrozen(const QRect& area)
{
    const int width = frozenWidth();
    const int first = rowAt(area.top());
    if (width == 0 || first < 0)
        return;
    QPainter painter{viewport()};
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    for (int row = first; row < m_model->rowCount() && rowViewportPosition(row) <= area.bottom(); ++row) {
        const auto index = m_model->index(row, 0);
        option.rect = {0, rowViewportPosition(row), width, rowHeight(row)};
        option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
        itemDelegate()->paint(&painter, option, index);
        painter.fillRect(QRect{width - 1, option.rect.top(), 1, option.rect.height()},
                         Theme::current().color(Token::divider));
    }
}

void RowTable::setDensity(RowDelegate::Density density)
{
    m_delegate->setDensity(density);
    const int height = m_delegate->rowHeight();
    if (verticalHeader()->defaultSectionSize() != height)
        verticalHeader()->setDefaultSectionSize(height);
}

/// Home and End go to the first and the last row: within one there is nowhere to go. A way that ends on a head goes on
/// to the next row, or back from the end of the table.
QModelIndex RowTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int rows = m_model->rowCount();
    if (rows > 0 && (action == MoveHome || action == MoveEnd))
        return m_model->index(action == MoveHome ? firstChoosable() : rows - 1, std::max(0, currentIndex().column()));
    const auto reached = QTableView::moveCursor(action, modifiers);
    if (!reached.isValid() || !m_model->isHeadAt(reached.row()))
        return reached;
    const int step = reached.row() < currentIndex().row() ? -1 : 1;
    const int beyond = choosableFrom(reached.row(), step);
    const int row = beyond >= 0 ? beyond : choosableFrom(reached.row(), -step);
    return row >= 0 ? reached.siblingAtRow(row) : QModelIndex{};
}

void RowTable::keep()
{
    m_isChanging = true;
    m_kept = {.selected = selectedRows(), .current = currentIndex().row()};
    const int top = rowAt(0);
    if (top >= 0 && verticalScrollBar()->value() > 0) {
        m_kept.top = top;
        m_kept.topOffset = rowViewportPosition(top);
    }
    if (m_kept.selected.size() > followedRows)
        selectionModel()->reset();
}

void RowTable::restore(const RowChange& change)
{
    const auto now = [&](int row) { return row < 0 ? -1 : change.moved[static_cast<std::size_t>(row)]; };
    std::vector<bool> isSelected(static_cast<std::size_t>(m_model->rowCount()));
    for (const int row : m_kept.selected) {
        if (const int moved = now(row); moved >= 0)
            isSelected[static_cast<std::size_t>(moved)] = true;
    }
    std::vector<int> rows;
    for (std::size_t row = 0; row < isSelected.size(); ++row) {
        if (isSelected[row])
            rows.push_back(static_cast<int>(row));
    }
    layOut();
    if (rows != selectedRows())
        selectRows(rows);
    if (const int current = now(m_kept.current); current >= 0 && !rows.empty()) {
        if (current != currentIndex().row())
            selectionModel()->setCurrentIndex(m_model->index(current, 0), QItemSelectionModel::NoUpdate);
    } else {
        selectionModel()->clearCurrentIndex();
    }
    if (const int top = now(m_kept.top); top >= 0)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + rowViewportPosition(top) - m_kept.topOffset);
    m_kept = {};
    m_isChanging = false;
    viewport()->update();
    Q_EMIT selectionMoved();
}

/// Neighbours are selected as one range, as thousands of ranges take their square; a head between two of them belongs
/// to the range without being selected.
void RowTable::selectRows(const std::vector<int>& rows)
{
    QItemSelection selection;
    for (std::size_t first = 0; first < rows.size();) {
        auto last = first;
        while (last + 1 < rows.size() && rows[last + 1] == choosableFrom(rows[last] + 1, 1))
            ++last;
        selection.append({m_model->index(rows[first], 0), m_model->index(rows[last], 0)});
        first = last + 1;
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void RowTable::hover(int row)
{
    m_delegate->setHoveredRow(row);
    viewport()->update();
}

int RowTable::hoveredRow() const
{
    return m_delegate->hoveredRow();
}

/// Below the current row, for a menu that is asked for by keys.
QPoint RowTable::menuPlace() const
{
    const auto row = visualRect(currentIndex());
    const auto place = row.isValid() ? row.bottomLeft() + QPoint{row.height(), 0} : viewport()->rect().topLeft();
    return viewport()->mapToGlobal(place);
}

void RowTable::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    layOut();
}

void RowTable::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOut();
}

void RowTable::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    paintFrozen(event->rect());
    if (!hasFocus() || currentIndex().isValid())
        return;
    QPainter painter{viewport()};
    painter.setPen(QPen{Theme::current().color(Token::focus), ringWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin});
    painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
}

void RowTable::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    // The toolkit frames the first row without choosing it.
    if (!selectionModel()->hasSelection())
        selectionModel()->clearCurrentIndex();
    viewport()->update();
}

void RowTable::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->modifiers().testFlag(Qt::ControlModifier) && currentIndex().isValid()) {
        Q_EMIT opened();
        return;
    }
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        Q_EMIT menuWanted(menuPlace());
        return;
    }
    QTableView::keyPressEvent(event);
}

void RowTable::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT menuWanted(event->reason() == QContextMenuEvent::Mouse ? event->globalPos() : menuPlace());
    event->accept();
}

/// A head takes no press: Qt would begin the next range of keys there and then refuse it.
void RowTable::mousePressEvent(QMouseEvent* event)
{
    const int row = rowAt(event->position().toPoint().y());
    if (row >= 0 && m_model->isHeadAt(row))
        event->accept();
    else
        QTableView::mousePressEvent(event);
}

void RowTable::mouseMoveEvent(QMouseEvent* event)
{
    hover(rowAt(event->position().toPoint().y()));
    QTableView::mouseMoveEvent(event);
}

void RowTable::leaveEvent(QEvent* event)
{
    hover(-1);
    QTableView::leaveEvent(event);
}
