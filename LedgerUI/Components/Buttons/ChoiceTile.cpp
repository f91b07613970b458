#include "LedgerUI/Components/Buttons/ChoiceTile.h"

#include <algorithm>

#include <QEvent>
#include <QPainter>

#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int leastWidth = 150;
constexpr int padding = 10;
constexpr int textLeft = padding + Space::icon + Space::step2;
constexpr int wrapped = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

int heightOf(const QString& text, const QFont& font, int width)
{
    return QFontMetrics{font}.boundingRect(QRect{0, 0, std::max(width, 1), QWIDGETSIZE_MAX}, wrapped, text).height();
}

}

ChoiceTile::ChoiceTile(QWidget* parent) : QAbstractButton{parent}
{
    setCheckable(true);
    speakAsRadioButton(*this);
    auto policy = QSizePolicy{QSizePolicy::Expanding, QSizePolicy::Preferred};
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAttribute(Qt::WA_Hover);
}

void ChoiceTile::present(const QString& glyph, const QString& title, const QString& sentence)
{
    m_glyph = glyph;
    m_sentence = sentence;
    setText(title);
    setAccessibleName(title);
    setAccessibleDescription(sentence);
    updateGeometry();
    update();
}

QSize ChoiceTile::sizeHint() const
{
    return {leastWidth, heightForWidth(std::max(width(), leastWidth))};
}

int ChoiceTile::heightForWidth(int width) const
{
    const int room = width - textLeft - padding;
    return 2 * padding + heightOf(text(), TypeScale::bold(TypeStep::body), room) +
           heightOf(m_sentence, TypeScale::font(TypeStep::small), room);
}

void ChoiceTile::paintEvent(QPaintEvent* /*event*/)
{
    const auto& theme = Theme::current();
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isOn = isChecked();
    const auto ground = !isEnabled()   ? Token::fieldOff
                        : isOn         ? Token::accentSoft
                        : underMouse() ? Token::surfaceAlt
                                       : Token::surface;
    const auto border = hasFocus() ? Token::focus : isOn && isEnabled() ? Token::accent : Token::divider;
    const double width = hasFocus() || isOn ? 2.0 : 1.0;
    painter.setPen({theme.color(border), width});
    painter.setBrush(theme.color(ground));
    painter.drawRoundedRect(QRectF{rect()}.adjusted(width / 2, width / 2, -width / 2, -width / 2), Space::radius,
                            Space::radius);
    const auto tone = theme.color(!isEnabled() ? Token::text2 : isOn ? Token::accent : Token::text);
    painter.drawPixmap(padding, padding + 1, Icon::pixmap(m_glyph, tone, Space::icon, devicePixelRatioF()));
    const auto title = isOn ? TypeScale::bold(TypeStep::body) : TypeScale::font(TypeStep::body);
    auto area = rect().adjusted(textLeft, padding, -padding, 0);
    painter.setFont(title);
    painter.setPen(tone);
    painter.drawText(area, wrapped, text());
    area.setTop(area.top() + heightOf(text(), title, area.width()));
    painter.setFont(TypeScale::font(TypeStep::small));
    painter.setPen(theme.color(Token::text2));
    painter.drawText(area, wrapped, m_sentence);
}

bool ChoiceTile::event(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
    return QAbstractButton::event(event);
}
