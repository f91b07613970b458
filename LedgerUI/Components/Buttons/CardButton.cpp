#include "LedgerUI/Components/Buttons/CardButton.h"

#include <algorithm>

#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>
#include <QToolTip>

#include "LedgerUI/Presentation/Text/NameText.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int largeLead = 28; // mark and initials; glyphs are Space::icon
constexpr int inset = 10;
constexpr int titleLines = 2;
constexpr double ringWidth = 2.0;

/// `text` broken into at most `count` lines of `width`; the last one is elided when there is more.
QStringList wrapped(const QString& text, const QFont& font, int width, int count)
{
    QTextLayout layout{text, font};
    layout.beginLayout();
    QStringList lines;
    const QFontMetrics metrics{font};
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (lines.size() + 1 == count) {
            lines.append(metrics.elidedText(text.mid(line.textStart()), Qt::ElideRight, width));
            break;
        }
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

}

CardButton::CardButton(Lead lead, int height, QWidget* parent) : QAbstractButton{parent}, m_lead{lead}, m_height{height}
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void CardButton::setGlyph(const QString& glyph)
{
    m_glyph = glyph;
    update();
}

void CardButton::setTitle(const QString& title)
{
    setText(title);
    update();
}

void CardButton::setSubtitle(const QString& subtitle)
{
    m_subtitle = subtitle;
    update();
}

void CardButton::setTrailing(const QString& glyph)
{
    m_trailing = glyph;
    update();
}

void CardButton::setShape(Shape shape)
{
    m_shape = shape;
    update();
}

QSize CardButton::sizeHint() const
{
    return {m_height, m_height};
}

void CardButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    paintGround(painter);
    paintLead(painter);
    if (m_shape == Shape::folded)
        return;
    paintTexts(painter);
    if (m_trailing.isEmpty())
        return;
    const auto glyph = Icon::pixmap(m_trailing, Theme::current().color(Token::text2), Space::icon, devicePixelRatioF());
    painter.drawPixmap(width() - inset - Space::icon, (height() - Space::icon) / 2, glyph);
}

bool CardButton::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && m_shape == Shape::folded && toolTip().isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QAbstractButton::event(event);
}

QRect CardButton::leadRect() const
{
    const int extent = m_lead == Lead::glyph ? Space::icon : largeLead;
    const int left = m_shape == Shape::folded ? (width() - extent) / 2 : m_lead == Lead::glyph ? inset : Space::step1;
    // A glyph stands beside the first line, a picture in the middle of the whole.
    const int top = m_lead == Lead::glyph && !m_subtitle.isEmpty() ? inset : (height() - extent) / 2;
    return {left, top, extent, extent};
}

QRect CardButton::textRect() const
{
    const int left = leadRect().right() + 1 + (m_lead == Lead::glyph ? Space::step3 : Space::step2);
    const int right = width() - (m_trailing.isEmpty() ? Space::step1 : inset + Space::icon + Space::step1);
    return {left, 0, std::max(0, right - left), height()};
}

void CardButton::paintGround(QPainter& painter) const
{
    const auto& theme = Theme::current();
    painter.setPen(Qt::NoPen);
    if (isChecked())
        painter.setBrush(theme.color(Token::accentSoft));
    else if (isEnabled() && focusPolicy() != Qt::NoFocus && (underMouse() || isDown()))
        painter.setBrush(theme.color(Token::sunken));
    else
        painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect(), Space::radius, Space::radius);
    if (!hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen({theme.color(Token::focus), ringWidth});
    painter.drawRoundedRect(QRectF{rect()}.adjusted(1, 1, -1, -1), Space::radius - 1, Space::radius - 1);
}

void CardButton::paintLead(QPainter& painter) const
{
    const auto& theme = Theme::current();
    const auto place = leadRect();
    if (m_lead == Lead::mark) {
        Icon::mark().paint(&painter, place);
    } else if (m_lead == Lead::glyph) {
        const auto color = theme.color(!isEnabled() ? Token::disabled : isChecked() ? Token::accent : Token::text2);
        painter.drawPixmap(place.topLeft(), Icon::pixmap(m_glyph, color, Space::icon, devicePixelRatioF()));
    } else {
        painter.setPen(theme.color(Token::divider));
        painter.setBrush(theme.color(Token::sunken));
        painter.drawEllipse(QRectF{place}.adjusted(0.5, 0.5, -0.5, -0.5));
        painter.setPen(theme.color(Token::text2));
        painter.setFont(TypeScale::bold(TypeStep::micro));
        painter.drawText(place, Qt::AlignCenter, initialsOf(text()));
    }
}

void CardButton::paintTexts(QPainter& painter) const
{
    const auto& theme = Theme::current();
    const auto room = textRect();
    const auto small = TypeScale::font(TypeStep::small);
    const auto lines = wrapped(text(), titleFont(), room.width(), m_subtitle.isEmpty() ? titleLines : 1);
    const int titleHeight = m_lead == Lead::glyph ? QFontMetrics{titleFont()}.height() : QFontMetrics{small}.height();
    const int subtitleHeight = m_subtitle.isEmpty() ? 0 : QFontMetrics{small}.height();
    int top = (height() - static_cast<int>(lines.size()) * titleHeight - subtitleHeight) / 2;

    painter.setFont(titleFont());
    painter.setPen(theme.color(!isEnabled() ? Token::disabled : isChecked() ? Token::accent : Token::text));
    for (const auto& line : lines) {
        painter.drawText(QRect{room.left(), top, room.width(), titleHeight}, Qt::AlignVCenter | Qt::AlignLeft, line);
        top += titleHeight;
    }
    if (m_subtitle.isEmpty())
        return;
    painter.setFont(m_lead == Lead::initials ? TypeScale::font(TypeStep::micro) : small);
    painter.setPen(theme.color(isEnabled() ? Token::text2 : Token::disabled));
    painter.drawText(QRect{room.left(), top, room.width(), subtitleHeight}, Qt::AlignVCenter | Qt::AlignLeft,
                     QFontMetrics{painter.font()}.elidedText(m_subtitle, Qt::ElideRight, room.width()));
}

QFont CardButton::titleFont() const
{
    const auto step = m_lead == Lead::glyph ? TypeStep::body : TypeStep::small;
    return m_lead != Lead::glyph || isChecked() ? TypeScale::bold(step) : TypeScale::font(step);
}
