#include "LedgerUI/Components/Page/EmptyState.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int columnWidth = 520;
constexpr int topMargin = 72;

}

EmptyState::EmptyState(const QString& glyph, QWidget* parent) : QWidget{parent}
{
    m_headline = new TextLabel(TypeStep::title, Token::text, this);
    m_headline->setWordWrap(true);
    m_sentence = new TextLabel(TypeStep::body, Token::text2, this);
    m_sentence->setWordWrap(true);
    auto* glyphLabel = new GlyphLabel(glyph, Token::text3, Space::step8, this);

    auto* column = new QWidget(this);
    column->setMaximumWidth(columnWidth);
    auto* rows = new QVBoxLayout(column);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(glyphLabel, 0, Qt::AlignLeft);
    rows->addSpacing(Space::step4);
    rows->addWidget(m_headline);
    rows->addSpacing(Space::step1);
    rows->addWidget(m_sentence);
    m_buttons = new QHBoxLayout;
    m_buttons->setContentsMargins(0, Space::step4, 0, 0);
    m_buttons->setSpacing(Space::step2);
    m_buttons->addStretch(1);
    rows->addLayout(m_buttons);
    m_steps = new QVBoxLayout;
    m_steps->setContentsMargins(0, Space::step2, 0, 0);
    m_steps->setSpacing(0);
    rows->addLayout(m_steps);

    auto* centred = new QHBoxLayout;
    centred->addStretch(1);
    centred->addWidget(column, columnWidth);
    centred->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Space::pageMargin, topMargin, Space::pageMargin, Space::pageMargin);
    layout->addLayout(centred);
    layout->addStretch(1);
}

void EmptyState::setTexts(const QString& headline, const QString& sentence)
{
    m_headline->setText(headline);
    m_sentence->setText(sentence);
    setAccessibleName(headline);
    setAccessibleDescription(sentence);
}

void EmptyState::addButton(QWidget* button)
{
    m_buttons->insertWidget(m_buttons->count() - 1, button);
}

void EmptyState::addStep(QWidget* step)
{
    m_steps->addWidget(step);
}
