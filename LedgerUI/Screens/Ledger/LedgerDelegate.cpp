#include "LedgerUI/Screens/Ledger/LedgerDelegate.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/TextLines.h"
#include "LedgerUI/Presentation/Entry/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Ledger/LedgerTableModel.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int selectedBar = 3;

QColor color(const ThemeColor& tint)
{
    return Theme::current().color(tint);
}

QColor strong(const LedgerRow& row)
{
    return color(row.isReversed ? Token::text2 : Token::text);
}

QFont struck(QFont font, bool isReversed)
{
    font.setStrikeOut(isReversed);
    return font;
}

void drawText(QPainter& painter, const QRect& line, const QFont& font, const QColor& ink, const QString& text,
              Qt::Alignment alignment = Qt::AlignLeft)
{
    painter.setFont(font);
    painter.setPen(ink);
    const auto shown = QFontMetrics{font}.elidedText(text, Qt::ElideRight, line.width());
    painter.drawText(line, static_cast<int>(alignment | Qt::AlignVCenter), shown);
}

void drawGlyph(QPainter& painter, const QRect& box, const QString& name, const ThemeColor& tint)
{
    const auto ratio = painter.device()->devicePixelRatioF();
    const auto pixmap = Icon::pixmap(name, color(tint), box.width(), ratio);
    painter.drawPixmap(box.topLeft(), pixmap);
}

QRect centred(const QRect& line, int left, int extent)
{
    return {left, line.top() + (line.height() - extent) / 2, extent, extent};
}

/// The upper or lower one of two lines that together stand in the middle of `cell`.
QRect upperLine(const QRect& cell)
{
    const int body = QFontMetrics{TypeScale::font(TypeStep::body)}.height();
    const int small = QFontMetrics{TypeScale::font(TypeStep::small)}.height();
    return {cell.left(), cell.top() + (cell.height() - body - small) / 2, cell.width(), body};
}

QRect lowerLine(const QRect& cell)
{
    const auto upper = upperLine(cell);
    const int small = QFontMetrics{TypeScale::font(TypeStep::small)}.height();
    return {cell.left(), upper.bottom() + 1, cell.width(), small};
}

}

LedgerDelegate::LedgerDelegate(const LedgerTableModel& model, QObject* parent)
    : QStyledItemDelegate{parent}, m_model{model}
{
}

QRect LedgerDelegate::contentsOf(const QRect& cell, int column)
{
    const int left = column == LedgerTableModel::date ? Space::cellPaddingOuter : Space::cellPadding;
    const int right = column == LedgerTableModel::amount ? Space::cellPaddingOuter : Space::cellPadding;
    return cell.adjusted(left, 0, -right, -1);
}

int LedgerDelegate::rowHeight() const
{
    const int body = QFontMetrics{TypeScale::font(TypeStep::body)}.height();
    const int small = QFontMetrics{TypeScale::font(TypeStep::small)}.height();
    return m_density == Density::oneLine ? std::max(30, body + 12) : std::max(42, body + small + 8);
}

void LedgerDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    paintGround(*painter, option, index);
    painter->setClipRect(option.rect);
    const auto cell = contentsOf(option.rect, index.column());
    const auto& row = m_model.row(index.row());
    switch (index.column()) {
    case LedgerTableModel::date:
        paintDate(*painter, cell, index.row());
        break;
    case LedgerTableModel::entry:
        paintEntry(*painter, cell, row);
        break;
    case LedgerTableModel::account:
        paintAccount(*painter, cell, row);
        break;
    case LedgerTableModel::member:
        drawText(*painter, cell, TypeScale::font(TypeStep::small), color(Token::text2), row.member);
        break;
    case LedgerTableModel::amount:
        paintAmounts(*painter, cell, row);
        break;
    default:
        break;
    }
    painter->restore();
}

void LedgerDelegate::paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const auto ground = isSelected ? Token::accentSoft : index.row() == m_hovered ? Token::surfaceAlt : Token::surface;
    const auto& rect = option.rect;
    painter.fillRect(rect, color(ground));
    painter.fillRect(QRect{rect.left(), rect.bottom(), rect.width(), 1}, color(Token::hairline));
    const bool isFirst = index.column() == LedgerTableModel::date;
    if (isSelected && isFirst)
        painter.fillRect(QRect{rect.left(), rect.top(), selectedBar, rect.height()}, color(Token::accent));

    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    if (!view || !view->hasFocus() || view->currentIndex().row() != index.row())
        return;
    // One ring around the whole row: the cells draw its pieces.
    const auto ring = color(Token::focus);
    painter.fillRect(QRect{rect.left(), rect.top(), rect.width(), 2}, ring);
    painter.fillRect(QRect{rect.left(), rect.bottom() - 1, rect.width(), 2}, ring);
    if (isFirst)
        painter.fillRect(QRect{rect.left(), rect.top(), 2, rect.height()}, ring);
    if (index.column() == LedgerTableModel::amount)
        painter.fillRect(QRect{rect.right() - 1, rect.top(), 2, rect.height()}, ring);
}

ThemeColor LedgerDelegate::kindColor(const LedgerRow& row) const
{
    return entryKindColor(row.kind, m_model.book()->snapshot());
}

void LedgerDelegate::paintDate(QPainter& painter, const QRect& cell, int row) const
{
    const bool repeats = m_daysGrouped && m_model.repeatsDay(row);
    drawText(painter, cell, TypeScale::font(TypeStep::body), color(repeats ? Token::text3 : Token::text),
             m_model.row(row).day);
}

void LedgerDelegate::paintEntry(QPainter& painter, const QRect& cell, const LedgerRow& row) const
{
    drawGlyph(painter, centred(cell, cell.left(), Space::icon), entryKindGlyph(row.kind), kindColor(row));
    const auto text = cell.adjusted(titleIndent, 0, 0, 0);
    const auto title = struck(TypeScale::font(TypeStep::body), row.isReversed);
    if (m_density == Density::twoLines && !row.note.isEmpty()) {
        auto upper = upperLine(text);
        upper.setRight(paintMarks(painter, upper, row) - Space::step2);
        drawText(painter, upper, title, strong(row), row.title);
        drawText(painter, lowerLine(text), TypeScale::font(TypeStep::small), color(Token::text2), row.note);
        return;
    }
    auto line = text;
    line.setRight(paintMarks(painter, line, row) - Space::step2);
    drawText(painter, line, title, strong(row), row.title);
    if (m_density == Density::oneLine) {
        line.setLeft(line.left() + QFontMetrics{title}.horizontalAdvance(row.title) + Space::step2);
        paintNote(painter, line, row);
    }
}

int LedgerDelegate::paintMarks(QPainter& painter, const QRect& line, const LedgerRow& row) const
{
    int left = line.right() + 1;
    const auto micro = TypeScale::font(TypeStep::micro);
    const QFontMetrics metrics{micro};
    if (row.receiptCount > 0) {
        if (row.receiptCount > 1) {
            const auto count = QString::number(row.receiptCount);
            left -= metrics.horizontalAdvance(count);
            drawText(painter, {left, line.top(), line.right() + 1 - left, line.height()}, micro, color(Token::text2),
                     count);
            left -= Space::step1;
        }
        left -= Space::chevron;
        drawGlyph(painter, centred(line, left, Space::chevron), QStringLiteral("paperclip"), Token::text2);
        left -= Space::step2;
    }
    if (row.isReversed) {
        const auto word = wordIn(m_model.book()->locale(), ledgerWords(), "reversed");
        const int width = metrics.horizontalAdvance(word) + 2 * Space::step2;
        const int height = metrics.height() + 3;
        left -= width;
        const QRect chip{left, line.top() + (line.height() - height) / 2, width, height};
        painter.setPen(Qt::NoPen);
        painter.setBrush(color(Token::sunken));
        painter.drawRoundedRect(chip, Space::radiusSmall, Space::radiusSmall);
        painter.setFont(micro);
        painter.setPen(color(Token::text2));
        painter.drawText(chip, Qt::AlignCenter, word);
    }
    return left;
}

/// On one line the far end of a movement stands before the note.
void LedgerDelegate::paintNote(QPainter& painter, QRect line, const LedgerRow& row) const
{
    const auto small = TypeScale::font(TypeStep::small);
    auto text = row.note;
    const auto end = !row.destination.isEmpty() ? row.destination
                     : row.amounts.size() > 1   ? row.amounts[1].text()
                                                : QString{};
    if (!end.isEmpty() && line.width() > Space::step8) {
        drawGlyph(painter, centred(line, line.left(), Space::chevron), QStringLiteral("arrow-right"), Token::text2);
        line.setLeft(line.left() + Space::chevron + Space::step1);
        text = text.isEmpty() ? end : QStringLiteral("%1 · %2").arg(end, text);
    }
    if (line.width() > Space::step6)
        drawText(painter, line, small, color(Token::text2), text);
}

void LedgerDelegate::paintAccount(QPainter& painter, const QRect& cell, const LedgerRow& row) const
{
    const auto small = TypeScale::font(TypeStep::small);
    const auto ink = color(Token::text2);
    if (m_density == Density::oneLine) {
        drawText(painter, cell, small, ink, row.account);
        return;
    }
    if (!row.destination.isEmpty()) {
        const int height = QFontMetrics{small}.height();
        const int top = cell.top() + (cell.height() - 2 * height) / 2;
        drawText(painter, {cell.left(), top, cell.width(), height}, small, ink, row.account);
        QRect lower{cell.left(), top + height, cell.width(), height};
        drawGlyph(painter, centred(lower, lower.left(), Space::chevron), QStringLiteral("arrow-right"), Token::text2);
        lower.setLeft(lower.left() + Space::chevron + Space::step1);
        drawText(painter, lower, small, ink, row.destination);
        return;
    }
    if (QFontMetrics{small}.horizontalAdvance(row.account) <= cell.width()) {
        drawText(painter, cell, small, ink, row.account);
        return;
    }
    painter.setFont(small);
    painter.setPen(ink);
    drawTwoLines(painter, cell, row.account);
}

void LedgerDelegate::paintAmounts(QPainter& painter, const QRect& cell, const LedgerRow& row) const
{
    if (row.amounts.empty())
        return;
    if (m_density == Density::oneLine || row.amounts.size() == 1) {
        paintAmount(painter, cell, row.amounts.front(), row);
        return;
    }
    const int height = QFontMetrics{TypeScale::font(TypeStep::body)}.height();
    const int top = cell.top() + (cell.height() - 2 * height) / 2;
    paintAmount(painter, {cell.left(), top, cell.width(), height}, row.amounts[0], row);
    paintAmount(painter, {cell.left(), top + height, cell.width(), height}, row.amounts[1], row);
}

void LedgerDelegate::paintAmount(QPainter& painter, const QRect& line, const MoneyText& amount,
                                 const LedgerRow& row) const
{
    drawText(painter, line, TypeScale::font(TypeStep::micro), color(Token::text3), amount.currency);
    auto ink = strong(row);
    if (!amount.isKnown())
        ink = color(Token::text3);
    else if (amount.sign == MoneyText::Sign::plus && !row.isReversed)
        ink = color(kindColor(row));
    drawText(painter, line, struck(TypeScale::font(TypeStep::body), row.isReversed), ink, amount.figure(),
             Qt::AlignRight);
}

bool LedgerDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                               const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // What a reader would hear is also what a cut text says in whole.
    QToolTip::showText(event->globalPos(), index.data(Qt::AccessibleTextRole).toString(), view);
    return true;
}
