#include "LedgerUI/Screens/Receipts/ReceiptPictureView.h"

#include <algorithm>

#include <QPainter>

#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

ReceiptPictureView::ReceiptPictureView(QWidget* parent) : QWidget{parent}
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    speakAsPicture(*this);
}

void ReceiptPictureView::showPicture(const QImage& picture, const QString& name)
{
    m_picture = picture;
    m_fitted = {};
    m_text.clear();
    setAccessibleName(name);
    update();
}

void ReceiptPictureView::showText(const QString& text)
{
    m_picture = {};
    m_fitted = {};
    m_text = text;
    setAccessibleName(text);
    update();
}

void ReceiptPictureView::paintEvent(QPaintEvent* /*event*/)
{
    const auto& theme = Theme::current();
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen{theme.color(Token::focus), 2.0} : QPen{theme.color(Token::divider), 1.0});
    painter.setBrush(theme.color(Token::sunken));
    painter.drawRoundedRect(QRectF{rect()}.adjusted(1, 1, -1, -1), Space::radius, Space::radius);
    const auto room = rect().adjusted(Space::step3, Space::step3, -Space::step3, -Space::step3);
    if (m_picture.isNull()) {
        painter.setPen(theme.color(Token::text2));
        painter.setFont(TypeScale::font(TypeStep::body));
        painter.drawText(room, static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, m_text);
        return;
    }
    const auto ratio = devicePixelRatioF();
    const auto most = (QSizeF{room.size()} * ratio).toSize();
    const auto wanted = m_picture.width() <= most.width() && m_picture.height() <= most.height()
                            ? m_picture.size()
                            : m_picture.size().scaled(most, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (m_fitted.size() != wanted) {
        m_fitted = m_picture.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        m_fitted.setDevicePixelRatio(ratio);
    }
    const QRectF place{QPointF{}, QSizeF{wanted} / ratio};
    painter.drawImage(QPointF{room.center() - place.center().toPoint()}, m_fitted);
}
