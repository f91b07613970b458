#include "LedgerUI/Components/Page/Banner.h"

#include <array>

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>

#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

namespace {

struct Look {
    const char* name;
    const char* glyph;
    Token color;
    const char* word;
};

constexpr std::array looks = std::to_array<Look>({
    {"error", "x-octagon-fill", Token::danger, "error"},
    {"warn", "exclamation-triangle-fill", Token::warn, "warning"},
    {"info", "info-circle-fill", Token::accent, "information"},
    {"success", "check-circle-fill", Token::ok, "success"},
});

const Look& lookOf(Banner::Kind kind)
{
    return looks[static_cast<std::size_t>(kind)];
}

}

Banner::Banner(Kind kind, QWidget* parent) : QFrame{parent}, m_kind{kind}
{
    m_layout = new QHBoxLayout(this);
    m_layout->setContentsMargins(Space::step3, Space::step2, Space::step3, Space::step2);
    m_layout->setSpacing(Space::step2);
    hide();
}

/// With the first message, since most forms close without one.
void Banner::build()
{
    const auto& look = lookOf(m_kind);
    m_glyph = new GlyphLabel(QString::fromLatin1(look.glyph), look.color, Space::icon, this);
    m_text = new TextLabel(TypeStep::body, Token::text, this);
    m_text->setWordWrap(true);
    m_text->setAlignment(Qt::AlignTop | Qt::AlignLeft); // beside the glyph, also where a button is higher than a line
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_layout->insertWidget(0, m_glyph, 0, Qt::AlignTop);
    m_layout->insertWidget(1, m_text, 1);
}

void Banner::present(Kind kind, const QString& text)
{
    m_kind = kind;
    if (!m_text && text.isEmpty())
        return;
    if (!m_text)
        build();
    const auto& look = lookOf(kind);
    setStyleProperty(this, "banner", QString::fromLatin1(look.name));
    m_glyph->setGlyph(QString::fromLatin1(look.glyph), look.color);
    m_text->setText(text);
    nameForReaders();
    setVisible(!text.isEmpty());
    if (text.isEmpty())
        return;
    QAccessibleEvent alert{this, QAccessible::Alert};
    QAccessible::updateAccessibility(&alert);
}

void Banner::addAction(QWidget* button)
{
    m_layout->addWidget(button, 0, Qt::AlignTop);
}

QString Banner::text() const
{
    return m_text ? m_text->text() : QString{};
}

void Banner::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        nameForReaders();
    QFrame::changeEvent(event);
}

void Banner::nameForReaders()
{
    setAccessibleName(word(dialogWords(), lookOf(m_kind).word) + QStringLiteral(": ") + text());
}
