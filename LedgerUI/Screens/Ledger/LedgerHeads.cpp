#include "LedgerUI/Screens/Ledger/LedgerHeads.h"

#include <QPainter>

#include "LedgerUI/Presentation/Ledger/LedgerTableModel.h"
#include "LedgerUI/Screens/Ledger/LedgerDelegate.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int headHeight = 28;
constexpr int arrowExtent = 8;
constexpr int textToArrow = 4;

}

LedgerHeads::LedgerHeads(QWidget* parent) : QHeaderView{Qt::Horizontal, parent}
{
    setSectionResizeMode(QHeaderView::Fixed);
    setHighlightSections(false);
    setSectionsClickable(true);
    setSortIndicatorShown(true);
    setFixedHeight(headHeight);
    viewport()->setAttribute(Qt::WA_Hover);
}

void LedgerHeads::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    const auto& theme = Theme::current();
    const bool isSorted = sortIndicatorSection() == section;
    const bool isHovered = rect.contains(viewport()->mapFromGlobal(QCursor::pos())) && viewport()->underMouse();
    painter->fillRect(rect, theme.color(isHovered ? Token::sunken : Token::surfaceAlt));
    painter->fillRect(QRect{rect.left(), rect.bottom(), rect.width(), 1}, theme.color(Token::divider));

    const auto font = isSorted ? TypeScale::bold(TypeStep::small) : TypeScale::font(TypeStep::small);
    const auto text = textOf(section);
    const int width = QFontMetrics{font}.horizontalAdvance(text);
    auto line = LedgerDelegate::contentsOf(rect, section);
    if (section == LedgerTableModel::entry)
        line.setLeft(line.left() + LedgerDelegate::titleIndent);
    const bool isAtRight = section == LedgerTableModel::amount;
    const int left = isAtRight ? line.right() + 1 - width : line.left();
    painter->setFont(font);
    painter->setPen(theme.color(isSorted ? Token::text : Token::text2));
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

QSize LedgerHeads::sectionSizeFromContents(int section) const
{
    const QRect wide{0, 0, 1000, headHeight};
    const int padding = wide.width() - LedgerDelegate::contentsOf(wide, section).width() +
                        (section == LedgerTableModel::entry ? LedgerDelegate::titleIndent : 0);
    const int text = QFontMetrics{TypeScale::bold(TypeStep::small)}.horizontalAdvance(textOf(section));
    return {padding + text + textToArrow + arrowExtent, headHeight};
}

QString LedgerHeads::textOf(int section) const
{
    return model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
}
