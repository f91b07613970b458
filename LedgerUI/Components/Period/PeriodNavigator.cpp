#include "LedgerUI/Components/Period/PeriodNavigator.h"

#include <utility>

#include <QEvent>
#include <QHBoxLayout>
#include <QToolButton>

#include "LedgerUI/Components/Period/PeriodButton.h"
#include "LedgerUI/Components/Period/PeriodPopover.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

QToolButton* stepButton(const char* name, const char* glyph, const char* segment, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setProperty("segment", QString::fromLatin1(segment));
    button->setIcon(Icon::of(QString::fromLatin1(glyph), Token::text2));
    button->setIconSize({Space::chevron, Space::chevron});
    button->setFixedSize(Space::control, Space::control);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

}

PeriodNavigator::PeriodNavigator(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("periodNavigator"));
    m_previous = stepButton("periodPrevious", "chevron-left", "first", this);
    m_label = new PeriodButton(this);
    m_label->setObjectName(QStringLiteral("periodLabel"));
    m_label->setProperty("segment", QStringLiteral("middle"));
    m_next = stepButton("periodNext", "chevron-right", "last", this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_previous);
    layout->addWidget(m_label);
    layout->addWidget(m_next);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(m_previous, &QToolButton::clicked, this, &PeriodNavigator::goBack);
    connect(m_label, &QToolButton::clicked, this, &PeriodNavigator::openPopover);
    connect(m_next, &QToolButton::clicked, this, &PeriodNavigator::goForward);
    presentTexts();
}

void PeriodNavigator::present(const Period& period, PeriodCounts counts, std::chrono::year_month_day today)
{
    m_period = period;
    m_counts = std::move(counts);
    m_today = today;
    presentTexts();
}

void PeriodNavigator::goBack()
{
    if (const auto previous = m_period.previous())
        Q_EMIT periodChosen(*previous);
}

void PeriodNavigator::goForward()
{
    if (const auto next = nextInReach())
        Q_EMIT periodChosen(*next);
}

std::optional<Period> PeriodNavigator::nextInReach() const
{
    auto next = m_period.next();
    return next && next->firstDay() <= m_counts.horizon(m_today) ? std::move(next) : std::nullopt;
}

void PeriodNavigator::openPopover()
{
    if (!m_popover) {
        m_popover = new PeriodPopover(m_label);
        connect(m_popover, &PeriodPopover::periodChosen, this, &PeriodNavigator::periodChosen);
    }
    if (m_popover->isVisible())
        m_popover->hide();
    else
        m_popover->openOn(m_period, m_counts, m_today);
}

void PeriodNavigator::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        presentTexts();
    QWidget::changeEvent(event);
}

void PeriodNavigator::presentTexts()
{
    const auto& words = periodWords();
    const auto label = periodLabel(m_period, InterfaceLanguage::tag());
    m_label->setText(label);
    m_label->setAccessibleName(word(words, "accessibleName", {label.toStdString()}));
    m_label->updateGeometry();
    m_previous->setAccessibleName(word(words, "previous"));
    m_previous->setToolTip(word(words, "previous"));
    m_previous->setEnabled(m_period.previous().has_value());
    const bool mayGoOn = nextInReach().has_value();
    m_next->setAccessibleName(word(words, "next"));
    m_next->setToolTip(word(words, mayGoOn || m_period.isAllTime() ? "next" : "nextRefused"));
    m_next->setEnabled(mayGoOn);
    if (m_popover)
        m_popover->retranslate();
}
