#include "LedgerUI/Components/Fields/FieldError.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

namespace {

constexpr int beforeGlyph = 2; // centres the glyph on the first line

}

FieldError::FieldError(QWidget* field, QWidget* parent) : QWidget{parent}, m_field{field}
{
    hide();
}

/// With the first message: a form has one for each field, and most never say anything.
void FieldError::build()
{
    m_text = new TextLabel(TypeStep::small, Token::danger, this);
    m_text->setWordWrap(true);
    m_text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* glyph = new GlyphLabel(QStringLiteral("x-octagon-fill"), Token::danger, Space::chevron, this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, Space::step1, 0, 0);
    layout->setSpacing(Space::step1 + 2);
    auto* glyphColumn = new QVBoxLayout;
    glyphColumn->setContentsMargins(0, beforeGlyph, 0, 0);
    glyphColumn->addWidget(glyph);
    glyphColumn->addStretch(1);
    layout->addLayout(glyphColumn);
    layout->addWidget(m_text, 1);
}

void FieldError::present(const QString& message)
{
    if (message == this->message())
        return;
    if (!m_text)
        build();
    m_text->setText(message);
    setVisible(!message.isEmpty());
    if (!m_field)
        return;
    setStyleProperty(m_field, "invalid", !message.isEmpty());
    m_field->setAccessibleDescription(message);
}

QString FieldError::message() const
{
    return m_text ? m_text->text() : QString{};
}
