#include "LedgerUI/Components/Text/TextLabel.h"

#include <QResizeEvent>

#include "LedgerUI/Theme/StyleProperty.h"
#include "LedgerUI/Theme/Theme.h"

TextLabel::TextLabel(TypeStep step, Token tone, QWidget* parent) : QLabel{parent}
{
    setFont(TypeScale::font(step));
    setTextFormat(Qt::PlainText);
    setTone(tone);
}

void TextLabel::setTone(Token tone)
{
    const auto name = tokenColors()[static_cast<std::size_t>(tone)].name;
    setStyleProperty(this, "tone", QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())));
}

void TextLabel::setInk(const ThemeColor& ink)
{
    if (m_ink == ink)
        return; // its sheet would be read anew
    if (!m_ink)
        connect(&Theme::current(), &Theme::changed, this, &TextLabel::applyInk);
    m_ink = ink;
    applyInk();
}

void TextLabel::applyInk()
{
    // A palette would be lost whenever a pane around the label is dressed anew.
    if (m_ink)
        setStyleSheet(QStringLiteral("color: %1").arg(Theme::current().color(*m_ink).name()));
}

void TextLabel::setBold(bool isBold)
{
    auto changed = font();
    changed.setWeight(isBold ? QFont::Bold : QFont::Normal);
    setFont(changed);
}

QSize TextLabel::minimumSizeHint() const
{
    auto hint = QLabel::minimumSizeHint();
    if (wordWrap() && !text().isEmpty())
        hint.setHeight(heightForWidth(width()));
    return hint;
}

void TextLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    if (wordWrap() && event->oldSize().width() != width())
        updateGeometry();
}
