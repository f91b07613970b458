#include "LedgerUI/Components/Buttons/PrimaryButton.h"

#include <QPainter>

#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr double ringInset = 3.0;
constexpr double ringWidth = 2.0;

}

PrimaryButton::PrimaryButton(QWidget* parent) : QPushButton{parent}
{
    setProperty("kind", QStringLiteral("primary"));
}

void PrimaryButton::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    if (!hasFocus() || !isEnabled())
        return;
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen({Theme::current().color(Token::onAccent), ringWidth});
    painter.drawRoundedRect(QRectF{rect()}.adjusted(ringInset, ringInset, -ringInset, -ringInset),
                            Space::radiusSmall - 1, Space::radiusSmall - 1);
}
