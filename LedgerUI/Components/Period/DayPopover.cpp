#include "LedgerUI/Components/Period/DayPopover.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Period/PeriodGridView.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int popoverWidth = 288;

std::chrono::year_month_day calendarDay(const std::string& day)
{
    return LedgerDay::parse(day).value_or(std::chrono::year{1970} / std::chrono::January / 1);
}

}

DayPopover::DayPopover(QWidget* anchor, Edge edge) : Popover{anchor, edge}
{
    setObjectName(QStringLiteral("dayPopover"));
    setFixedWidth(popoverWidth);
    build();
    connect(m_line, &QLineEdit::textEdited, this, &DayPopover::readTyped);
    connect(m_earlier, &QToolButton::clicked, this, [this] { turnPage(-1); });
    connect(m_later, &QToolButton::clicked, this, [this] { turnPage(1); });
    connect(m_grid, &PeriodGridView::pageWanted, this, &DayPopover::turnPage);
    connect(m_grid, &PeriodGridView::periodChosen, this,
            [this](const Period& period) { choose(LedgerDay::format(period.firstDay())); });
    connect(m_today, &QPushButton::clicked, this, [this] { choose({}); });
}

void DayPopover::build()
{
    m_line = new QLineEdit(this);
    m_line->setObjectName(QStringLiteral("dayLine"));
    m_line->installEventFilter(this);
    m_error = new FieldError(m_line, this);
    m_error->setObjectName(QStringLiteral("dayError"));
    m_earlier = new IconButton(QStringLiteral("chevron-left"), IconButton::Frame::none, this);
    m_earlier->setObjectName(QStringLiteral("dayEarlier"));
    m_later = new IconButton(QStringLiteral("chevron-right"), IconButton::Frame::none, this);
    m_later->setObjectName(QStringLiteral("dayLater"));
    m_title = new TextLabel(TypeStep::body, Token::text, this);
    m_title->setBold(true);
    m_title->setAlignment(Qt::AlignCenter);
    m_grid = new PeriodGridView(this);
    m_grid->setObjectName(QStringLiteral("dayGrid"));
    m_keys = new TextLabel(TypeStep::small, Token::text2, this);
    m_keys->setWordWrap(true);
    m_today = new QPushButton(this);
    m_today->setObjectName(QStringLiteral("dayToday"));
    m_today->setProperty("kind", QStringLiteral("flat"));
    m_today->setProperty("extent", QStringLiteral("small"));
    m_today->setAutoDefault(false);

    auto* head = new QHBoxLayout;
    head->addWidget(m_earlier);
    head->addWidget(m_title, 1);
    head->addWidget(m_later);
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_keys, 1);
    foot->addWidget(m_today, 0, Qt::AlignTop);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Space::step3, Space::step3, Space::step3, Space::step2);
    rows->setSpacing(Space::step1);
    rows->addWidget(m_line);
    rows->addWidget(m_error);
    rows->addLayout(head);
    rows->addWidget(m_grid);
    rows->addLayout(foot);
}

void DayPopover::openOn(const std::string& day, const DayBounds& bounds)
{
    m_bounds = bounds;
    setAccessibleName(word(EntryCopy::words(), "editDate"));
    m_line->setAccessibleName(word(dayWords(), "day"));
    m_earlier->setName(word(dayWords(), "earlier"));
    m_later->setName(word(dayWords(), "later"));
    m_keys->setText(word(dayWords(), "keys"));
    m_today->setText(word(dayWords(), "today"));
    m_error->present({});
    show(day);
    open(m_line);
}

void DayPopover::show(const std::string& day)
{
    m_day = day;
    m_shown = day;
    m_line->setText(DayTyping::written(day, InterfaceLanguage::tag()));
    m_line->selectAll();
    m_error->present(DayTyping::whyNot(day, m_bounds, InterfaceLanguage::tag()));
    presentMonth();
}

void DayPopover::presentMonth()
{
    auto grid = DayTyping::month(m_shown, m_bounds, InterfaceLanguage::tag());
    m_title->setText(grid.title);
    const auto day = calendarDay(m_day);
    m_grid->present(std::move(grid), Period::containing(Period::Span::day, day), calendarDay(m_shown));
}

void DayPopover::turnPage(int by)
{
    const auto page = turnedPage(Period::Span::day, calendarDay(m_shown), by);
    if (!page)
        return;
    m_shown = LedgerDay::format(*page);
    presentMonth();
}

/// The grid follows what is typed as far as it names a day.
void DayPopover::readTyped()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto day = DayTyping::typed(m_line->text(), m_shown, m_bounds, locale);
    m_error->present({});
    if (!day)
        return;
    m_day = *day;
    m_shown = *day;
    presentMonth();
}

bool DayPopover::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_line && event->type() == QEvent::KeyPress && takeKey(static_cast<QKeyEvent&>(*event)))
        return true;
    return Popover::eventFilter(watched, event);
}

bool DayPopover::takeKey(const QKeyEvent& key)
{
    const auto& locale = InterfaceLanguage::tag();
    // A minus may also part the numbers of a day that is being typed.
    const bool isSettled = m_line->text() == DayTyping::written(m_day, locale);
    switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Plus:
        show(DayTyping::moved(m_day, 1, m_bounds));
        return true;
    case Qt::Key_Minus:
        if (!isSettled)
            return false;
        [[fallthrough]];
    case Qt::Key_Down:
        show(DayTyping::moved(m_day, -1, m_bounds));
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        turnPage(key.key() == Qt::Key_PageUp ? -1 : 1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const auto day = DayTyping::typed(m_line->text(), m_shown, m_bounds, locale);
        const auto refusal = day ? DayTyping::whyNot(*day, m_bounds, locale) : word(dayWords(), "unreadable");
        m_error->present(refusal);
        if (day && refusal.isEmpty())
            choose(*day);
        return true;
    }
    default:
        return false;
    }
}

void DayPopover::choose(const std::string& day)
{
    hide();
    Q_EMIT dayChosen(day);
}
