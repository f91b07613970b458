#include "LedgerUI/Screens/Imports/ImportFileCard.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

ImportFileCard::ImportFileCard(QWidget* parent) : QFrame{parent}
{
    setProperty("card", QStringLiteral("true"));
    m_name = new TextLabel(TypeStep::body, Token::text, this);
    m_name->setObjectName(QStringLiteral("importFileName"));
    m_name->setBold(true);
    m_text = new TextLabel(TypeStep::body, Token::text2, this);
    m_text->setWordWrap(true);
    m_choose = new QPushButton(this);
    m_choose->setObjectName(QStringLiteral("importChoose"));
    m_choose->setAutoDefault(false);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Space::step3, Space::step2, Space::step3, Space::step2);
    row->setSpacing(Space::step2);
    row->addWidget(new GlyphLabel(QStringLiteral("filetype-csv"), Token::text2, Space::icon, this));
    row->addWidget(m_name);
    row->addWidget(m_text, 1);
    row->addWidget(m_choose);
}

void ImportFileCard::present(const QString& name, const QString& text, const QString& button)
{
    m_name->setText(name);
    m_name->setVisible(!name.isEmpty());
    m_text->setText(text);
    m_choose->setText(button);
}
