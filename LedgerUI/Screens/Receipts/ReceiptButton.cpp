#include "LedgerUI/Screens/Receipts/ReceiptButton.h"

#include <QPainter>

#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int rowHeight = 30;
constexpr int textStart = Space::step2 + Space::icon + Space::step2;

}

ReceiptButton::ReceiptButton(QWidget* parent) : RowButton{parent}
{
    setFont(TypeScale::font(TypeStep::body));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ReceiptButton::present(const QString& name, bool isDocument)
{
    m_isDocument = isDocument;
    setText(name);
    setToolTip(name);
    update();
}

QSize ReceiptButton::sizeHint() const
{
    return {textStart + fontMetrics().horizontalAdvance(text()) + Space::step2,
            std::max(rowHeight, fontMetrics().height() + Space::step3)};
}

QSize ReceiptButton::minimumSizeHint() const
{
    return {textStart + fontMetrics().horizontalAdvance(QStringLiteral("MM…M")), sizeHint().height()};
}

void ReceiptButton::paintEvent(QPaintEvent* event)
{
    RowButton::paintEvent(event);
    const auto& theme = Theme::current();
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    const auto glyph = m_isDocument ? QStringLiteral("file-earmark-pdf") : QStringLiteral("file-earmark-image");
    painter.drawPixmap(Space::step2, (height() - Space::icon) / 2,
                       Icon::pixmap(glyph, theme.color(Token::text2), Space::icon, devicePixelRatioF()));
    painter.setFont(font());
    painter.setPen(theme.color(isEnabled() ? Token::text : Token::text2));
    const auto room = rect().adjusted(textStart, 0, -Space::step1, 0);
    painter.drawText(room, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width()));
}
