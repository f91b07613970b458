#include "LedgerUI/Screens/Entry/CategoryTile.h"

#include <QPainter>

#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Text/TextLines.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int tileWidth = 116;
constexpr int tileHeight = 44;

}

CategoryTile::CategoryTile(QWidget* parent) : QAbstractButton{parent}
{
    setCheckable(true);
    speakAsRadioButton(*this);
    setFixedHeight(tileHeight);
    setMinimumWidth(tileWidth);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CategoryTile::present(const EntryCategory& category, bool isChosen)
{
    m_category = category;
    setText(category.name);
    setAccessibleName(category.name);
    setToolTip(category.name);
    setChecked(isChosen);
    update();
}

QSize CategoryTile::sizeHint() const
{
    return {tileWidth, tileHeight};
}

void CategoryTile::paintEvent(QPaintEvent* /*event*/)
{
    const auto& theme = Theme::current();
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isOn = isChecked();
    const auto ground = !isEnabled()   ? Token::fieldOff
                        : isOn         ? Token::accentSoft
                        : underMouse() ? Token::surfaceAlt
                                       : Token::surface;
    const auto border = hasFocus()     ? Token::focus
                        : !isEnabled() ? (isOn ? Token::control : Token::divider)
                        : isOn         ? Token::accent
                                       : Token::divider;
    const double width = hasFocus() || isOn ? 2.0 : 1.0;
    painter.setPen({theme.color(border), width});
    painter.setBrush(theme.color(ground));
    const double inset = width / 2;
    painter.drawRoundedRect(QRectF{rect()}.adjusted(inset, inset, -inset, -inset), Space::radius, Space::radius);

    const auto tone = theme.color(!isEnabled() ? Token::text2 : isOn ? Token::accent : Token::text);
    const auto glyph = Icon::exists(m_category.symbol) ? m_category.symbol : QStringLiteral("tag");
    painter.drawPixmap(Space::step2 + 1, (height() - Space::icon) / 2,
                       Icon::pixmap(glyph, isOn ? tone : theme.color(Token::text2), Space::icon, devicePixelRatioF()));
    painter.setFont(isOn ? TypeScale::bold(TypeStep::small) : TypeScale::font(TypeStep::small));
    painter.setPen(tone);
    drawTwoLines(painter, rect().adjusted(Space::step2 + Space::icon + Space::step2, 2, -Space::step1, -2), text());
}

void CategoryTile::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void CategoryTile::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    update();
}
