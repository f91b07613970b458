#include "LedgerUI/Components/Table/RowTable.h"

#include <algorithm>
#include <utility>

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
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
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
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
    int row = 0;
    while (row < m_model->rowCount() && m_model->isHeadAt(row))
        ++row;
    return row < m_model->rowCount() ? row : -1;
}

void RowTable::setDensity(RowDelegate::Density density)
{
    m_delegate->setDensity(density);
    const int height = m_delegate->rowHeight();
    if (verticalHeader()->defaultSectionSize() != height)
        verticalHeader()->setDefaultSectionSize(height);
}

/// Home and End go to the first and the last row: within one there is nowhere to go.
QModelIndex RowTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int rows = m_model->rowCount();
    if (rows > 0 && (action == MoveHome || action == MoveEnd))
        return m_model->index(action == MoveHome ? firstChoosable() : rows - 1, std::max(0, currentIndex().column()));
    return QTableView::moveCursor(action, modifiers);
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

/// Selects ascending rows, neighbours as one range.
void RowTable::selectRows(const std::vector<int>& rows)
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

void RowTable::hover(int row)
{
    m_delegate->setHoveredRow(row);
    viewport()->update();
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
