#include "LedgerUI/Screens/Entry/CategoryTile.h"

#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int tileWidth = 116;
constexpr int tileHeight = 44;
constexpr int tileLines = 2;

/// The name on up to two lines, cut where it needs a third.
void paintName(QPainter& painter, const QRect& area, const QString& name)
{
    const auto metrics = painter.fontMetrics();
    QTextOption wrapping{Qt::AlignLeft};
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout{name, painter.font()};
    layout.setTextOption(wrapping);
    QStringList lines;
    layout.beginLayout();
    while (lines.size() < tileLines) {
        auto line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(area.width());
        const bool isLast = lines.size() == tileLines - 1;
        const auto rest = name.mid(line.textStart(), isLast ? -1 : line.textLength()).trimmed();
        lines << metrics.elidedText(rest, Qt::ElideRight, area.width());
    }
    layout.endLayout();
    const int leading = metrics.height() - 2;
    int top = area.center().y() - static_cast<int>(lines.size()) * leading / 2;
    for (const auto& line : lines) {
        painter.drawText(QRect{area.left(), top, area.width(), leading}, Qt::AlignLeft | Qt::AlignVCenter, line);
        top += leading;
    }
}

}

CategoryTile::CategoryTile(QWidget* parent) : QAbstractButton{parent}
{
    setCheckable(true);
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
    paintName(painter, rect().adjusted(Space::step2 + Space::icon + Space::step2, 2, -Space::step1, -2), text());
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
