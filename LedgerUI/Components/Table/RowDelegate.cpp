#include "LedgerUI/Components/Table/RowDelegate.h"

#include <algorithm>
#include <utility>

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QTableView>
#include <QToolTip>

#include "LedgerUI/Components/Table/CellPainter.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int selectedBar = 3;
constexpr int ringWidth = 2;

/// The whole row that this cell is a part of.
QRect rowOf(const QStyleOptionViewItem& option)
{
    const auto* view = qobject_cast<const QTableView*>(option.widget);
    if (!view)
        return option.rect;
    const auto* heads = view->horizontalHeader();
    return {-heads->offset(), option.rect.top(), heads->length(), option.rect.height()};
}

int headTextHeight()
{
    return QFontMetrics{TypeScale::font(TypeStep::small)}.height() + Space::step1;
}

}

RowDelegate::RowDelegate(CellAt cellAt, QObject* parent) : QStyledItemDelegate{parent}, m_cellAt{std::move(cellAt)} {}

QRect RowDelegate::contentsOf(const QRect& cell, int column, int columns)
{
    const int left = column == 0 ? Space::cellPaddingOuter : Space::cellPadding;
    const int right = column == columns - 1 ? Space::cellPaddingOuter : Space::cellPadding;
    return cell.adjusted(left, 0, -right, -1);
}

int RowDelegate::rowHeight() const
{
    const int body = QFontMetrics{TypeScale::font(TypeStep::body)}.height();
    const int small = QFontMetrics{TypeScale::font(TypeStep::small)}.height();
    switch (m_density) {
    case Density::oneLine:
        return std::max(30, body + 12);
    case Density::twoLines:
        return std::max(42, body + small + 8);
    case Density::list:
        return std::max(33, body + QFontMetrics{TypeScale::font(TypeStep::micro)}.height());
    }
    return body;
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const auto cell = m_cellAt(index, m_density);
    paintGround(*painter, option, index, cell);
    painter->setClipRect(option.rect);
    auto area = cell.spansRow ? contentsOf(rowOf(option), 0, 1)
                              : contentsOf(option.rect, index.column(), index.model()->columnCount());
    if (cell.isHead)
        area.setTop(area.bottom() - headTextHeight());
    CellPainter{*painter}.paint(cell, area);
    painter->restore();
}

void RowDelegate::paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                              const Cell& cell) const
{
    const auto color = [](Token token) { return Theme::current().color(token); };
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const auto ground = isSelected                                 ? Token::accentSoft
                        : index.row() == m_hovered && !cell.isHead ? Token::surfaceAlt
                                                                   : Token::surface;
    const auto& rect = option.rect;
    painter.fillRect(rect, color(ground));
    if (!cell.joinsBelow)
        painter.fillRect(QRect{rect.left(), rect.bottom(), rect.width(), 1},
                         color(cell.isHead ? Token::divider : Token::hairline));
    if (cell.isHead)
        return;
    const bool isFirst = index.column() == 0;
    if (isSelected && isFirst)
        painter.fillRect(QRect{rect.left(), rect.top(), selectedBar, rect.height()}, color(Token::accent));

    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    if (!view || !view->hasFocus() || view->currentIndex().row() != index.row())
        return;
    const bool isCell = m_ring == Ring::cell;
    if (isCell && view->currentIndex().column() != index.column())
        return;
    const auto ring = color(Token::focus);
    painter.fillRect(QRect{rect.left(), rect.top(), rect.width(), ringWidth}, ring);
    painter.fillRect(QRect{rect.left(), rect.bottom() - 1, rect.width(), ringWidth}, ring);
    if (isFirst || isCell)
        painter.fillRect(QRect{rect.left(), rect.top(), ringWidth, rect.height()}, ring);
    if (isCell || index.column() == index.model()->columnCount() - 1)
        painter.fillRect(QRect{rect.right() - 1, rect.top(), ringWidth, rect.height()}, ring);
}

bool RowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                            const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // What a reader would hear is also what a cut text says in whole.
    const auto told = index.data(Qt::ToolTipRole).toString();
    QToolTip::showText(event->globalPos(), told.isEmpty() ? index.data(Qt::AccessibleTextRole).toString() : told, view);
    return true;
}
