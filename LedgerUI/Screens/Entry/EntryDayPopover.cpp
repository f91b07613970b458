#include "LedgerUI/Screens/Entry/EntryDayPopover.h"

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
#include "LedgerUI/Presentation/Entry/EntryFormWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int popoverWidth = 288;

std::chrono::year_month_day calendarDay(const std::string& day)
{
    return LedgerDay::parse(day).value_or(std::chrono::year{1970} / std::chrono::January / 1);
}

}

EntryDayPopover::EntryDayPopover(QWidget* anchor, Edge edge) : Popover{anchor, edge}
{
    setObjectName(QStringLiteral("entryDayPopover"));
    setFixedWidth(popoverWidth);
    build();
    connect(m_line, &QLineEdit::textEdited, this, &EntryDayPopover::readTyped);
    connect(m_earlier, &QToolButton::clicked, this, [this] { turnPage(-1); });
    connect(m_later, &QToolButton::clicked, this, [this] { turnPage(1); });
    connect(m_grid, &PeriodGridView::pageWanted, this, &EntryDayPopover::turnPage);
    connect(m_grid, &PeriodGridView::periodChosen, this,
            [this](const Period& period) { choose(LedgerDay::format(period.firstDay())); });
    connect(m_today, &QPushButton::clicked, this, [this] { choose({}); });
}

void EntryDayPopover::build()
{
    m_line = new QLineEdit(this);
    m_line->setObjectName(QStringLiteral("entryDayLine"));
    m_line->installEventFilter(this);
    m_error = new FieldError(m_line, this);
    m_error->setObjectName(QStringLiteral("entryDayError"));
    m_earlier = new IconButton(QStringLiteral("chevron-left"), IconButton::Frame::none, this);
    m_earlier->setObjectName(QStringLiteral("entryDayEarlier"));
    m_later = new IconButton(QStringLiteral("chevron-right"), IconButton::Frame::none, this);
    m_later->setObjectName(QStringLiteral("entryDayLater"));
    m_title = new TextLabel(TypeStep::body, Token::text, this);
    m_title->setBold(true);
    m_title->setAlignment(Qt::AlignCenter);
    m_grid = new PeriodGridView(this);
    m_grid->setObjectName(QStringLiteral("entryDayGrid"));
    m_keys = new TextLabel(TypeStep::small, Token::text2, this);
    m_keys->setWordWrap(true);
    m_today = new QPushButton(this);
    m_today->setObjectName(QStringLiteral("entryDayToday"));
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

void EntryDayPopover::openOn(const std::string& day, const EntryDayBounds& bounds)
{
    m_bounds = bounds;
    setAccessibleName(word(EntryCopy::words(), "editDate"));
    m_line->setAccessibleName(word(entryFormWords(), "day"));
    m_earlier->setName(word(entryFormWords(), "day.earlier"));
    m_later->setName(word(entryFormWords(), "day.later"));
    m_keys->setText(word(entryFormWords(), "day.keys"));
    m_today->setText(word(entryFormWords(), "day.today"));
    m_error->present({});
    show(day);
    open(m_line);
}

void EntryDayPopover::show(const std::string& day)
{
    m_day = day;
    m_shown = day;
    m_line->setText(EntryDay::written(day, InterfaceLanguage::tag()));
    m_line->selectAll();
    m_error->present(EntryDay::whyNot(day, m_bounds, InterfaceLanguage::tag()));
    presentMonth();
}

void EntryDayPopover::presentMonth()
{
    auto grid = EntryDay::month(m_shown, m_bounds, InterfaceLanguage::tag());
    m_title->setText(grid.title);
    const auto day = calendarDay(m_day);
    m_grid->present(std::move(grid), Period::containing(Period::Span::day, day), calendarDay(m_shown));
}

void EntryDayPopover::turnPage(int by)
{
    const auto page = turnedPage(Period::Span::day, calendarDay(m_shown), by);
    if (!page)
        return;
    m_shown = LedgerDay::format(*page);
    presentMonth();
}

/// The grid follows what is typed as far as it names a day.
void EntryDayPopover::readTyped()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto day = EntryDay::typed(m_line->text(), m_shown, m_bounds, locale);
    m_error->present({});
    if (!day)
        return;
    m_day = *day;
    m_shown = *day;
    presentMonth();
}

bool EntryDayPopover::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_line && event->type() == QEvent::KeyPress && takeKey(static_cast<QKeyEvent&>(*event)))
        return true;
    return Popover::eventFilter(watched, event);
}

bool EntryDayPopover::takeKey(const QKeyEvent& key)
{
    const auto& locale = InterfaceLanguage::tag();
    // A minus may also part the numbers of a day that is being typed.
    const bool isSettled = m_line->text() == EntryDay::written(m_day, locale);
    switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Plus:
        show(EntryDay::moved(m_day, 1, m_bounds));
        return true;
    case Qt::Key_Minus:
        if (!isSettled)
            return false;
        [[fallthrough]];
    case Qt::Key_Down:
        show(EntryDay::moved(m_day, -1, m_bounds));
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        turnPage(key.key() == Qt::Key_PageUp ? -1 : 1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const auto day = EntryDay::typed(m_line->text(), m_shown, m_bounds, locale);
        const auto refusal = day ? EntryDay::whyNot(*day, m_bounds, locale) : word(entryFormWords(), "day.unreadable");
        m_error->present(refusal);
        if (refusal.isEmpty())
            choose(*day);
        return true;
    }
    default:
        return false;
    }
}

void EntryDayPopover::choose(const std::string& day)
{
    hide();
    Q_EMIT dayChosen(day);
}
