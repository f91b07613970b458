#include "LedgerUI/Screens/Entry/EntryDayNote.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

EntryDayNote::EntryDayNote(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("entryDayNote"));
    m_day = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setWordWrap(true);
    auto* lines = new QVBoxLayout;
    lines->setSpacing(0);
    lines->addStretch(1);
    lines->addWidget(m_day);
    lines->addWidget(m_hint);
    lines->addStretch(1);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Space::step2);
    layout->addWidget(new GlyphLabel(QStringLiteral("calendar3"), Token::text2, Space::icon, this));
    layout->addLayout(lines, 1);
}

void EntryDayNote::present(const QString& day, const QString& hint)
{
    m_day->setText(day);
    m_hint->setText(hint);
    m_hint->setVisible(!hint.isEmpty());
}
