#include "LedgerUI/Components/Period/DayEdit.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Period/DayPopover.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Theme/Space.h"

DayEdit::DayEdit(QWidget* parent) : QWidget{parent}
{
    m_line = new QLineEdit(this);
    m_line->installEventFilter(this);
    m_open = new IconButton(QStringLiteral("calendar3"), IconButton::Frame::outlined, this);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step1);
    row->addWidget(m_line, 1);
    row->addWidget(m_open);
    setFocusProxy(m_line);
    connect(m_line, &QLineEdit::textEdited, this, &DayEdit::readTyped);
    connect(m_line, &QLineEdit::editingFinished, this, [this] {
        if (!m_day.empty())
            m_line->setText(DayTyping::written(m_day, InterfaceLanguage::tag()));
    });
    connect(m_open, &QToolButton::clicked, this, &DayEdit::openCalendar);
}

DayEdit::~DayEdit()
{
    // The line finishes editing once more when it loses the focus by going, after this is gone.
    m_line->disconnect(this);
}

void DayEdit::present(const std::string& day, const DayBounds& bounds)
{
    m_bounds = bounds;
    const auto& locale = InterfaceLanguage::tag();
    if (!day.empty())
        m_lastDay = day;
    m_day = day;
    if (day.empty() || (m_line->hasFocus() && DayTyping::typed(m_line->text(), m_lastDay, m_bounds, locale) == day))
        return;
    m_line->setText(DayTyping::written(day, locale));
}

void DayEdit::setNames(const QString& line, const QString& calendar)
{
    m_line->setAccessibleName(line);
    m_open->setName(calendar);
    m_open->setObjectName(m_line->objectName() + QStringLiteral("Calendar"));
}

bool DayEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_line || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& key = static_cast<QKeyEvent&>(*event);
    if (key.key() == Qt::Key_Down && key.modifiers().testFlag(Qt::AltModifier)) {
        openCalendar();
        return true;
    }
    // A minus may also part the numbers of a day that is being typed.
    const bool isSettled = !m_day.empty() && m_line->text() == DayTyping::written(m_day, InterfaceLanguage::tag());
    const bool isLater = key.key() == Qt::Key_Up || key.key() == Qt::Key_Plus;
    const bool isEarlier = key.key() == Qt::Key_Down || key.key() == Qt::Key_Minus;
    if (m_day.empty() || (!isLater && !isEarlier) || (key.key() == Qt::Key_Minus && !isSettled))
        return QWidget::eventFilter(watched, event);
    const auto moved = DayTyping::moved(m_day, isLater ? 1 : -1, m_bounds);
    m_line->setText(DayTyping::written(moved, InterfaceLanguage::tag()));
    Q_EMIT dayChanged(moved);
    return true;
}

void DayEdit::readTyped()
{
    const auto day = DayTyping::typed(m_line->text(), m_lastDay, m_bounds, InterfaceLanguage::tag());
    Q_EMIT dayChanged(day && m_bounds.hold(*day) ? *day : std::string{});
}

void DayEdit::openCalendar()
{
    if (!m_popover) {
        m_popover = new DayPopover(m_open, Popover::Edge::below);
        connect(m_popover, &DayPopover::dayChosen, this, [this](const std::string& day) {
            const auto chosen = day.empty() ? m_bounds.today : day;
            m_line->setText(DayTyping::written(chosen, InterfaceLanguage::tag()));
            Q_EMIT dayChanged(chosen);
        });
    }
    m_popover->openOn(m_lastDay.empty() ? m_bounds.today : m_lastDay, m_bounds);
}
