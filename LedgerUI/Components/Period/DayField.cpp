#include "LedgerUI/Components/Period/DayField.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerUI/Components/Period/DayPopover.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Space.h"

DayField::DayField(QWidget* parent) : QWidget{parent}
{
    m_glyph = new GlyphLabel(QStringLiteral("calendar3"), Token::text2, Space::icon, this);
    m_day = new QPushButton(this);
    m_day->setObjectName(QStringLiteral("entryDay"));
    m_day->setProperty("kind", QStringLiteral("link"));
    m_day->setAutoDefault(false);
    m_day->installEventFilter(this);
    m_fixed = new TextLabel(TypeStep::body, Token::text, this);
    m_fixed->setObjectName(QStringLiteral("entryFixedDay"));
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setObjectName(QStringLiteral("entryDayHint"));
    m_hint->setWordWrap(true);
    auto* lines = new QVBoxLayout;
    lines->setSpacing(0);
    lines->addStretch(1);
    lines->addWidget(m_day, 0, Qt::AlignLeft);
    lines->addWidget(m_fixed);
    lines->addWidget(m_hint);
    lines->addStretch(1);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step2);
    row->addWidget(m_glyph, 0, Qt::AlignVCenter);
    row->addLayout(lines, 1);
    connect(m_day, &QPushButton::clicked, this, &DayField::openCalendar);
}

void DayField::present(const DayContent& content)
{
    m_content = content;
    const auto& locale = InterfaceLanguage::tag();
    m_glyph->setGlyph(QStringLiteral("calendar3"), content.mayChange ? Token::accent : Token::text2);
    m_day->setText(content.text);
    m_day->setVisible(content.mayChange);
    m_day->setToolTip(word(EntryCopy::words(), "editDate"));
    m_day->setAccessibleName(listed({word(EntryCopy::words(), "editDate"), content.text}, locale));
    m_fixed->setText(content.text);
    m_fixed->setVisible(!content.mayChange);
    const bool isWrong = !content.message.isEmpty();
    m_hint->setText(isWrong ? content.message : content.hint);
    m_hint->setTone(isWrong ? Token::danger : Token::text2);
    m_hint->setVisible(!m_hint->text().isEmpty()); // else the day stands beside its glyph, not above it
    m_day->setAccessibleDescription(m_hint->text());
}

QWidget* DayField::control() const
{
    return m_day;
}

bool DayField::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& key = static_cast<QKeyEvent&>(*event);
    if (key.key() == Qt::Key_Down && key.modifiers().testFlag(Qt::AltModifier)) {
        openCalendar();
        return true;
    }
    const bool isLater = key.key() == Qt::Key_Up || key.key() == Qt::Key_Plus;
    const bool isEarlier = key.key() == Qt::Key_Down || key.key() == Qt::Key_Minus;
    if (!isLater && !isEarlier)
        return QWidget::eventFilter(watched, event);
    Q_EMIT dayChosen(DayTyping::moved(m_content.day, isLater ? 1 : -1, m_content.bounds));
    return true;
}

void DayField::openCalendar()
{
    if (!m_popover) {
        m_popover = new DayPopover(m_day);
        connect(m_popover, &DayPopover::dayChosen, this, &DayField::dayChosen);
    }
    m_popover->openOn(m_content.day, m_content.bounds);
}
