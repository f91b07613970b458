#include "LedgerUI/Screens/Company/Settings/SettingRow.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int aroundText = 14; // above and below

}

SettingRow::SettingRow(QWidget* parent) : QWidget{parent}
{
    m_title = new TextLabel(TypeStep::body, Token::text, this);
    m_title->setBold(true);
    m_text = new TextLabel(TypeStep::small, Token::text2, this);
    m_text->setWordWrap(true);
    m_note = new TextLabel(TypeStep::small, Token::warn, this);
    auto* words = new QVBoxLayout;
    words->setSpacing(0);
    for (auto* label : {m_title, m_text, m_note})
        words->addWidget(label);
    m_controls = new QHBoxLayout;
    m_controls->setSpacing(Space::step2);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, aroundText, 0, aroundText);
    row->setSpacing(Space::step8);
    row->addLayout(words, 1);
    row->addLayout(m_controls);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(row);
    rows->addWidget(new Line(Qt::Horizontal, this));
}

void SettingRow::present(const QString& title, const QString& text, const QString& note)
{
    m_title->setText(title);
    m_text->setText(text);
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
}

void SettingRow::addControl(QWidget* control)
{
    m_controls->addWidget(control, 0, Qt::AlignVCenter);
}
