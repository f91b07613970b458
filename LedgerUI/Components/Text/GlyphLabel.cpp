#include "LedgerUI/Components/Text/GlyphLabel.h"

#include <QPainter>

#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Theme.h"

GlyphLabel::GlyphLabel(QString name, const ThemeColor& color, int extent, QWidget* parent)
    : QWidget{parent}, m_name{std::move(name)}, m_color{color}, m_extent{extent}
{
    setFixedSize(extent, extent);
}

void GlyphLabel::setGlyph(const QString& name, const ThemeColor& color)
{
    m_name = name;
    m_color = color;
    update();
}

void GlyphLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    const auto& theme = Theme::current();
    const auto color = theme.color(isEnabled() ? m_color : ThemeColor{Token::disabled});
    painter.drawPixmap(0, 0, Icon::pixmap(m_name, color, m_extent, devicePixelRatioF()));
}
