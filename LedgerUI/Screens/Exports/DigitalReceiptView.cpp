#include "LedgerUI/Screens/Exports/DigitalReceiptView.h"

#include <utility>

#include <QPainter>

#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Print/PagePainter.h"
#include "LedgerUI/Presentation/Exports/DigitalReceiptPage.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int around = Space::dialogMargin;

}

DigitalReceiptView::DigitalReceiptView(QWidget* parent) : QWidget{parent}
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
    speakAsPicture(*this);
    connect(&Theme::current(), &Theme::changed, this, qOverload<>(&QWidget::update));
}

void DigitalReceiptView::present(PrintedPages pages)
{
    m_pages = std::move(pages);
    updateGeometry();
    update();
}

QSizeF DigitalReceiptView::paperSize() const
{
    return m_pages.size / DigitalReceiptPage::unitsPerPixel;
}

QSize DigitalReceiptView::sizeHint() const
{
    return paperSize().toSize() + QSize{2 * around, 2 * around};
}

void DigitalReceiptView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::current().color(Token::sunken));
    painter.drawRoundedRect(rect(), Space::radius, Space::radius);
    if (m_pages.pages.empty())
        return;
    const QRectF paper{QPointF{around, around}, paperSize()};
    painter.setBrush(Qt::white);
    painter.setPen(Theme::current().color(Token::divider));
    painter.drawRect(paper.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.translate(paper.topLeft());
    painter.scale(1 / DigitalReceiptPage::unitsPerPixel, 1 / DigitalReceiptPage::unitsPerPixel);
    PagePainter::paint(painter, m_pages, 0);
}
