#include "LedgerUI/Components/Table/PlainTable.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleHints>

#include "LedgerUI/Components/Table/CellPainter.h"
#include "LedgerUI/Components/Table/RowHeads.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int stretchedMinimum = 140;
constexpr int rowsMeasured = 500;
constexpr int foldRoom = 20; // at the left of a tree's top level
constexpr int ringWidth = 2;
constexpr int gripLeft = 4; // beside the bar of the chosen row
constexpr int gripExtent = 12;
constexpr int columnGap = 12; // beyond the paddings of the cells

int textWidth(TypeStep step, const QString& text)
{
    return static_cast<int>(std::ceil(QFontMetricsF{TypeScale::font(step)}.horizontalAdvance(text)));
}

CellText textOf(const PlainCell& cell)
{
    CellText text{.text = cell.text};
    if (cell.look == PlainCell::Look::quiet)
        text.ink = Token::text2;
    else if (cell.look == PlainCell::Look::warning)
        text.ink = Token::warn;
    else if (cell.look == PlainCell::Look::link)
        text.ink = Token::accent;
    text.isBold = cell.look == PlainCell::Look::bold;
    return text;
}

int indentOf(const PlainCell& cell)
{
    return cell.depth < 0 ? 0 : foldRoom + cell.depth * CellPainter::glyphIndent;
}

Cell paintedCell(const PlainTableModel& model, const QModelIndex& index)
{
    const auto& cell = model.cell(index);
    Cell painted{.indent = indentOf(cell), .fold = cell.fold, .glyph = cell.glyph};
    const bool isAtRight = model.columns()[static_cast<std::size_t>(index.column())].align == PlainColumn::Align::right;
    if (cell.look == PlainCell::Look::chip) {
        painted.lines.push_back({});
        painted.marks.push_back({.word = cell.text});
    } else if (isAtRight) {
        painted.amounts.push_back({.code = {}, .figure = textOf(cell)});
    } else {
        painted.lines.push_back(textOf(cell));
        if (!cell.mark.isEmpty())
            painted.marks.push_back({.word = {}, .glyph = cell.mark});
    }
    return painted;
}

}

PlainTable::PlainTable(int stretched, QWidget* parent) : PlainTable{new PlainTableModel, stretched, parent} {}

PlainTable::PlainTable(PlainTableModel* model, int stretched, QWidget* parent)
    : RowTable{*model, [model](const QModelIndex& index, RowDelegate::Density) { return paintedCell(*model, index); },
               parent},
      m_model{model}, m_stretched{stretched}
{
    m_model->setParent(this);
    setSelectionMode(SingleSelection);
    heads().setSortIndicatorShown(false);
    heads().setSectionsClickable(false);
    heads().setSortIndicator(-1, Qt::AscendingOrder);
    connect(this, &RowTable::selectionMoved, this, [this] { Q_EMIT chosen(qString(chosenID())); });
}

void PlainTable::present(std::vector<PlainColumn> columns, std::vector<PlainRow> rows)
{
    m_model->present(std::move(columns), std::move(rows));
    layOut();
}

int PlainTable::wholeHeight() const
{
    return horizontalHeader()->height() + m_model->rowCount() * verticalHeader()->defaultSectionSize() + 1;
}

std::string PlainTable::chosenID() const
{
    const auto ids = selectedIDs();
    return ids.empty() ? std::string{} : ids.front();
}

int PlainTable::contentWidth(int column) const
{
    int widest = 0;
    const int rows = std::min(m_model->rowCount(), rowsMeasured);
    for (int row = 0; row < rows; ++row) {
        const auto& cell = m_model->cell(m_model->index(row, column));
        const bool isChip = cell.look == PlainCell::Look::chip;
        int width = textWidth(isChip ? TypeStep::micro : TypeStep::body, cell.text);
        width +=
            (isChip ? 2 * Space::step2 : 0) + (cell.glyph.isEmpty() ? 0 : CellPainter::glyphIndent) + indentOf(cell);
        widest = std::max(widest, width);
    }
    const bool isLast = column == m_model->columnCount() - 1;
    const int paddings = (column == 0 ? Space::cellPaddingOuter : Space::cellPadding) +
                         (isLast ? Space::cellPaddingOuter : Space::cellPadding);
    return std::max(horizontalHeader()->sectionSizeHint(column), widest + paddings + (isLast ? 0 : columnGap));
}

void PlainTable::layOut()
{
    setDensity(RowDelegate::Density::oneLine);
    const int columns = m_model->columnCount();
    if (columns == 0)
        return;
    std::vector<int> widths;
    int taken = 0;
    for (int column = 0; column < columns; ++column) {
        setColumnHidden(column, false);
        widths.push_back(contentWidth(column));
        taken += column == m_stretched ? 0 : widths.back();
    }
    const int room = viewport()->width();
    for (int column = columns - 1; column >= 0 && room - taken < stretchedMinimum; --column) {
        if (!m_model->columns()[static_cast<std::size_t>(column)].isPart)
            continue;
        setColumnHidden(column, true);
        taken -= widths[static_cast<std::size_t>(column)];
    }
    taken -= cutWidest(widths, stretchedMinimum - (room - taken));
    widths[static_cast<std::size_t>(m_stretched)] = std::max(stretchedMinimum, room - taken);
    for (int column = 0; column < columns; ++column)
        setColumnWidth(column, widths[static_cast<std::size_t>(column)]);
}

/// Takes what is missing from the widest words, which are shown cut then; figures and heads stay whole. Answers how
/// much was found.
int PlainTable::cutWidest(std::vector<int>& widths, int missing) const
{
    const auto spare = [&](std::size_t column) {
        const int at = static_cast<int>(column);
        if (at == m_stretched || isColumnHidden(at) || m_model->columns()[column].align == PlainColumn::Align::right)
            return 0;
        return widths[column] - std::max(stretchedMinimum, horizontalHeader()->sectionSizeHint(at));
    };
    int found = 0;
    while (found < missing) {
        std::size_t widest = 0;
        for (std::size_t column = 1; column < widths.size(); ++column)
            widest = spare(column) > spare(widest) ? column : widest;
        if (spare(widest) <= 0)
            break;
        const int cut = std::min(missing - found, spare(widest));
        widths[widest] -= cut;
        found += cut;
    }
    return found;
}

void PlainTable::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy) && currentIndex().isValid()) {
        QGuiApplication::clipboard()->setText(m_model->copyText(currentIndex().row()));
        return;
    }
    if (currentIndex().isValid() && takeTreeKey(*event))
        return;
    RowTable::keyPressEvent(event);
}

bool PlainTable::takeTreeKey(const QKeyEvent& key)
{
    const bool isVertical = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down;
    if (m_isMovable && isVertical && key.modifiers().testFlag(Qt::AltModifier)) {
        Q_EMIT moveWanted(key.key() == Qt::Key_Up ? -1 : 1);
        return true;
    }
    const auto& cell = m_model->cell(m_model->index(currentIndex().row(), 0));
    const bool isHorizontal = key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    if (!isHorizontal || cell.fold.isEmpty())
        return false;
    Q_EMIT foldWanted(qString(chosenID()), key.key() == Qt::Key_Left);
    return true;
}

void PlainTable::mousePressEvent(QMouseEvent* event)
{
    RowTable::mousePressEvent(event);
    m_pressed = event->position().toPoint();
    m_drawn.clear();
}

void PlainTable::mouseMoveEvent(QMouseEvent* event)
{
    const auto place = event->position().toPoint();
    const bool isDrawn = m_isMovable && event->buttons().testFlag(Qt::LeftButton) &&
                         (place - m_pressed).manhattanLength() >= QGuiApplication::styleHints()->startDragDistance();
    if (!isDrawn) {
        if (!event->buttons().testFlag(Qt::LeftButton) || !m_isMovable)
            RowTable::mouseMoveEvent(event);
        return;
    }
    if (m_drawn.empty())
        m_drawn = chosenID();
    m_dropRow = rowAt(place.y());
    setCursor(Qt::ClosedHandCursor);
    viewport()->update();
}

void PlainTable::mouseReleaseEvent(QMouseEvent* event)
{
    const auto place = event->position().toPoint();
    if (m_drawn.empty()) {
        RowTable::mouseReleaseEvent(event);
        if (event->button() == Qt::LeftButton)
            release(indexAt(place), place);
        return;
    }
    const auto drawn = std::exchange(m_drawn, {});
    const int row = std::exchange(m_dropRow, -1);
    unsetCursor();
    viewport()->update();
    setState(NoState);
    if (row >= 0 && m_model->idAt(row) != drawn)
        Q_EMIT dropWanted(qString(drawn), qString(m_model->idAt(row)));
}

void PlainTable::release(const QModelIndex& index, const QPoint& place)
{
    if (!index.isValid())
        return;
    const auto& cell = m_model->cell(index);
    const auto id = qString(m_model->idAt(index.row()));
    if (cell.look == PlainCell::Look::link)
        Q_EMIT linkPressed(id);
    else if (!cell.fold.isEmpty() && place.x() < visualRect(index).left() + Space::cellPaddingOuter + foldRoom)
        Q_EMIT foldWanted(id, cell.fold == QStringLiteral("chevron-down"));
}

/// Before the row under the pointer, where it can be moved.
void PlainTable::paintGrip(QPainter& painter) const
{
    const int row = hoveredRow();
    if (!m_isMovable || !m_drawn.empty() || row < 0 || row >= m_model->rowCount())
        return;
    const int top = rowViewportPosition(row) + (rowHeight(row) - gripExtent) / 2;
    Icon::paint(painter, QStringLiteral("grip-vertical"), Theme::current().color(Token::text2),
                QRectF(gripLeft, top, gripExtent, gripExtent));
}

/// A line where the row that is being drawn would go.
void PlainTable::paintEvent(QPaintEvent* event)
{
    RowTable::paintEvent(event);
    QPainter painter{viewport()};
    paintGrip(painter);
    const int from = m_drawn.empty() ? -1 : m_model->rowOf(m_drawn);
    if (from < 0 || m_dropRow < 0 || m_dropRow == from)
        return;
    const int below = m_dropRow > from ? rowHeight(m_dropRow) : 0;
    painter.fillRect(QRect{0, rowViewportPosition(m_dropRow) + below - 1, viewport()->width(), ringWidth},
                     Theme::current().color(Token::focus));
}
