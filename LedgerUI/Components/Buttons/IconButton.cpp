#include "LedgerUI/Components/Buttons/IconButton.h"

#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

IconButton::IconButton(const QString& glyph, Frame frame, QWidget* parent) : QToolButton{parent}
{
    setProperty("kind", frame == Frame::outlined ? QStringLiteral("outlined") : QStringLiteral("icon"));
    setIconSize({Space::icon, Space::icon});
    setFixedSize(Space::control, Space::control);
    setFocusPolicy(Qt::StrongFocus);
    setGlyph(glyph);
}

void IconButton::setGlyph(const QString& glyph, Token color)
{
    setIcon(Icon::of(glyph, color, Token::accent));
}

void IconButton::setName(const QString& name)
{
    setAccessibleName(name);
    setToolTip(name);
}
