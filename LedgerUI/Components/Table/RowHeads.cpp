#include "LedgerUI/Components/Table/RowHeads.h"

#include <algorithm>

#include <QPainter>

#include "LedgerUI/Components/Table/CellPainter.h"
#include "LedgerUI/Components/Table/RowDelegate.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int headHeight = 28;
constexpr int arrowExtent = 8;
constexpr int textToArrow = 4;
constexpr int mostLines = 3;
constexpr int aroundLines = 8; // above and below the lines of a head that wraps

}

RowHeads::RowHeads(QWidget* parent) : QHeaderView{Qt::Horizontal, parent}
{
    setSectionResizeMode(QHeaderView::Fixed);
    setHighlightSections(false);
    setSectionsClickable(true);
    setFixedHeight(headHeight);
    viewport()->setAttribute(Qt::WA_Hover);
}

void RowHeads::paintEvent(QPaintEvent* event)
{
    QHeaderView::paintEvent(event);
    if (!m_freezesFirst || offset() == 0 || count() == 0)
        return;
    QPainter painter{viewport()};
    const QRect first{0, 0, sectionSize(0), height()};
    paintSection(&painter, first, 0);
    painter.fillRect(QRect{first.right(), first.top(), 1, first.height()}, Theme::current().color(Token::divider));
}

void RowHeads::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    const auto& theme = Theme::current();
    const bool isSorted = isSortIndicatorShown() && sortIndicatorSection() == section;
    const bool isHovered = rect.contains(viewport()->mapFromGlobal(QCursor::pos())) && viewport()->underMouse();
    painter->fillRect(rect, theme.color(isHovered ? Token::sunken : Token::surfaceAlt));
    painter->fillRect(QRect{rect.left(), rect.bottom(), rect.width(), 1}, theme.color(Token::divider));

    const auto font = isSorted ? TypeScale::bold(TypeStep::small) : TypeScale::font(TypeStep::small);
    const auto text = textOf(section);
    const int width = QFontMetrics{font}.horizontalAdvance(text);
    const auto line = contentsOf(rect, section);
    const auto alignment = model()->headerData(section, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>();
    const bool isAtRight = alignment.testFlag(Qt::AlignRight);
    const int left = isAtRight ? line.right() + 1 - width : line.left();
    painter->setFont(font);
    painter->setPen(theme.color(isSorted ? Token::text : Token::text2));
    if (m_wraps) {
        painter->drawText(line, static_cast<int>(Qt::TextWordWrap | Qt::AlignVCenter | alignment), text);
        return;
    }
    painter->drawText(QRect{left, line.top(), width, line.height()}, Qt::AlignVCenter | Qt::AlignLeft, text);
    if (!isSorted)
        return;
    // A descending column points down, as its values do.
    const auto glyph = sortIndicatorOrder() == Qt::AscendingOrder ? QStringLiteral("caret-up-fill")
                                                                  : QStringLiteral("caret-down-fill");
    const auto pixmap =
        Icon::pixmap(glyph, theme.color(Token::text), arrowExtent, painter->device()->devicePixelRatioF());
    const int beside = isAtRight ? left - textToArrow - arrowExtent : left + width + textToArrow;
    painter->drawPixmap(beside, line.center().y() - arrowExtent / 2 + 1, pixmap);
}

QSize RowHeads::sectionSizeFromContents(int section) const
{
    if (m_wraps)
        return {wrappedWidth(section), height()};
    const QRect wide{0, 0, 1000, headHeight};
    const int padding = wide.width() - contentsOf(wide, section).width();
    const int text = QFontMetrics{TypeScale::bold(TypeStep::small)}.horizontalAdvance(textOf(section));
    return {padding + text + textToArrow + arrowExtent, headHeight};
}

void RowHeads::setWrapping()
{
    m_wraps = true;
    setSectionsClickable(false);
    setSortIndicatorShown(false);
}

int RowHeads::wrappedWidth(int section) const
{
    const QRect wide{0, 0, 1000, headHeight};
    const int padding = wide.width() - contentsOf(wide, section).width();
    const QFontMetrics metrics{TypeScale::font(TypeStep::small)};
    const auto text = textOf(section);
    int width = 0;
    for (const auto& word : text.split(QLatin1Char{' '}))
        width = std::max(width, metrics.horizontalAdvance(word) + 1);
    const auto lines = [&](int room) {
        return metrics.boundingRect(QRect{0, 0, room, 1000}, Qt::TextWordWrap, text).height() / metrics.height();
    };
    while (lines(width) > mostLines)
        width += Space::step1;
    return padding + width;
}

void RowHeads::fitHeight()
{
    const QFontMetrics metrics{TypeScale::font(TypeStep::small)};
    int height = headHeight;
    for (int section = 0; section < count(); ++section) {
        if (isSectionHidden(section))
            continue;
        const auto room = contentsOf({0, 0, sectionSize(section), headHeight}, section);
        const auto lines = metrics.boundingRect(QRect{0, 0, room.width(), 1000}, Qt::TextWordWrap, textOf(section));
        height = std::max(height, lines.height() + aroundLines);
    }
    if (height != this->height())
        setFixedHeight(height);
}

QString RowHeads::textOf(int section) const
{
    return model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
}

QRect RowHeads::contentsOf(const QRect& rect, int section) const
{
    auto line = RowDelegate::contentsOf(rect, section, count());
    if (section == m_glyphColumn)
        line.setLeft(line.left() + CellPainter::glyphIndent);
    return line;
}
