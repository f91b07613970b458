#include "LedgerUI/Components/FieldError.h"

#include <QHBoxLayout>
#include <QStyle>

#include "LedgerUI/Components/GlyphLabel.h"
#include "LedgerUI/Components/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

FieldError::FieldError(QWidget* field, QWidget* parent) : QWidget{parent}, m_field{field}
{
    m_text = new TextLabel(TypeStep::small, Token::danger, this);
    m_text->setWordWrap(true);
    auto* glyph = new GlyphLabel(QStringLiteral("x-octagon-fill"), Token::danger, Space::chevron, this);
    glyph->setContentsMargins(0, 2, 0, 0);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, Space::step1, 0, 0);
    layout->setSpacing(Space::step1 + 2);
    layout->addWidget(glyph, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
    hide();
}

void FieldError::present(const QString& message)
{
    m_text->setText(message);
    setVisible(!message.isEmpty());
    if (!m_field)
        return;
    m_field->setProperty("invalid", !message.isEmpty());
    m_field->setAccessibleDescription(message);
    m_field->style()->unpolish(m_field);
    m_field->style()->polish(m_field);
}

QString FieldError::message() const
{
    return m_text->text();
}
