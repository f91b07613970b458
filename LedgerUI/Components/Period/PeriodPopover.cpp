#include "LedgerUI/Components/Period/PeriodPopover.h"

#include <array>

#include <QBoxLayout>
#include <QDateEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Period/PeriodGridView.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Span = Period::Span;
using std::chrono::year_month_day;

constexpr std::array spans{Span::day, Span::week, Span::month, Span::quarter, Span::year, Span::allTime, Span::dates};
constexpr int popoverWidth = 412;
constexpr int spansWidth = 127;
constexpr int spanRow = 30;
// Six weeks of two lines need more room than the other pages.
constexpr int heightOfDays = 322;
constexpr int heightOfOthers = 254;

QString text(std::string_view key)
{
    return word(periodWords(), key);
}

QDate dateOf(year_month_day day)
{
    return {static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
            static_cast<int>(static_cast<unsigned>(day.day()))};
}

year_month_day dayOf(QDate date)
{
    return std::chrono::year{date.year()} / std::chrono::month{static_cast<unsigned>(date.month())} /
           std::chrono::day{static_cast<unsigned>(date.day())};
}

QPushButton* flatButton(const char* name, QWidget* parent)
{
    auto* button = new QPushButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setProperty("kind", QStringLiteral("flat"));
    return button;
}

QDateEdit* dayEdit(const char* name, QWidget* parent)
{
    auto* edit = new QDateEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    edit->setCalendarPopup(true);
    edit->setDateRange(QDate{1, 1, 1}, QDate{9999, 12, 31});
    return edit;
}

}

PeriodPopover::PeriodPopover(QWidget* anchor) : Popover{anchor}
{
    setObjectName(QStringLiteral("periodPopover"));
    setFixedWidth(popoverWidth);
    m_spans = new QListWidget(this);
    m_spans->setObjectName(QStringLiteral("periodSpans"));
    m_spans->setFixedWidth(spansWidth);
    m_spans->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_spans->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for ([[maybe_unused]] const auto span : spans)
        (new QListWidgetItem(m_spans))->setSizeHint({spansWidth, spanRow});
    m_pages = new QStackedWidget(this);
    m_pages->addWidget(buildGridPage());
    m_pages->addWidget(buildAllTimePage());
    m_pages->addWidget(buildDatesPage());

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Space::step2, Space::step2, Space::step2, Space::step2);
    layout->setSpacing(Space::step1);
    layout->addWidget(m_spans);
    layout->addWidget(new Line(Qt::Vertical, this));
    layout->addWidget(m_pages, 1);
    connect(m_spans, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            presentSpan(spans[static_cast<std::size_t>(row)]);
    });
    connect(m_spans, &QListWidget::itemActivated, this, [this] {
        if (m_span == Span::allTime)
            choose(Period::allTime());
        else if (m_span == Span::dates)
            m_from->setFocus();
        else
            m_grid->setFocus();
    });
    retranslate();
}

QWidget* PeriodPopover::buildGridPage()
{
    auto* page = new QWidget(m_pages);
    m_earlier = new IconButton(QStringLiteral("chevron-left"), IconButton::Frame::none, page);
    m_earlier->setObjectName(QStringLiteral("periodEarlier"));
    m_later = new IconButton(QStringLiteral("chevron-right"), IconButton::Frame::none, page);
    m_later->setObjectName(QStringLiteral("periodLater"));
    m_title = new TextLabel(TypeStep::body, Token::text, page);
    m_title->setBold(true);
    m_title->setAlignment(Qt::AlignCenter);
    m_grid = new PeriodGridView(page);
    m_countHint = new TextLabel(TypeStep::small, Token::text2, page);
    m_this = flatButton("periodThis", page);
    m_this->setProperty("extent", QStringLiteral("small"));

    auto* head = new QHBoxLayout;
    head->addWidget(m_earlier);
    head->addWidget(m_title, 1);
    head->addWidget(m_later);
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(Space::step2, 0, 0, 0);
    foot->addWidget(m_countHint, 1);
    foot->addWidget(m_this);
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(Space::step1, 0, 0, 0);
    rows->setSpacing(Space::step1);
    rows->addLayout(head);
    rows->addWidget(m_grid, 1);
    rows->addLayout(foot);
    connect(m_earlier, &QToolButton::clicked, this, [this] { turnPage(-1); });
    connect(m_later, &QToolButton::clicked, this, [this] { turnPage(1); });
    connect(m_grid, &PeriodGridView::pageWanted, this, &PeriodPopover::turnPage);
    connect(m_grid, &PeriodGridView::periodChosen, this, &PeriodPopover::choose);
    connect(m_this, &QPushButton::clicked, this, [this] { choose(Period::containing(m_span, m_today)); });
    return page;
}

QWidget* PeriodPopover::buildAllTimePage()
{
    auto* page = new QWidget(m_pages);
    m_allText = new TextLabel(TypeStep::section, Token::text, page);
    m_allText->setWordWrap(true);
    m_allHint = new TextLabel(TypeStep::small, Token::text2, page);
    m_allHint->setWordWrap(true);
    m_showAll = new QPushButton(page);
    m_showAll->setObjectName(QStringLiteral("periodShowAll"));
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(Space::step3, Space::step2, Space::step3, Space::step2);
    rows->setSpacing(Space::step1);
    rows->addWidget(m_allText);
    rows->addWidget(m_allHint);
    rows->addSpacing(Space::step2);
    rows->addWidget(m_showAll, 0, Qt::AlignLeft);
    rows->addStretch(1);
    connect(m_showAll, &QPushButton::clicked, this, [this] { choose(Period::allTime()); });
    return page;
}

QWidget* PeriodPopover::buildDatesPage()
{
    auto* page = new QWidget(m_pages);
    m_fromLabel = new TextLabel(TypeStep::small, Token::text2, page);
    m_toLabel = new TextLabel(TypeStep::small, Token::text2, page);
    m_from = dayEdit("periodFrom", page);
    m_to = dayEdit("periodTo", page);
    m_fromLabel->setBuddy(m_from);
    m_toLabel->setBuddy(m_to);
    m_datesError = new FieldError(m_to, page);
    m_apply = new QPushButton(page);
    m_apply->setObjectName(QStringLiteral("periodApply"));
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(Space::step3, Space::step2, Space::step3, Space::step2);
    rows->setSpacing(Space::labelToField);
    rows->addWidget(m_fromLabel);
    rows->addWidget(m_from);
    rows->addSpacing(Space::step2);
    rows->addWidget(m_toLabel);
    rows->addWidget(m_to);
    rows->addWidget(m_datesError);
    rows->addSpacing(Space::step2);
    rows->addWidget(m_apply, 0, Qt::AlignLeft);
    rows->addStretch(1);
    connect(m_apply, &QPushButton::clicked, this, &PeriodPopover::chooseDates);
    return page;
}

void PeriodPopover::openOn(const Period& period, const PeriodCounts& counts, year_month_day today)
{
    m_period = period;
    m_counts = counts;
    m_today = today;
    const bool isBounded = !period.isAllTime();
    m_anchor = isBounded ? std::min(period.lastDay(), std::max(today, period.firstDay())) : today;
    m_from->setDate(dateOf(isBounded ? period.firstDay() : today));
    m_to->setDate(dateOf(isBounded ? period.lastDay() : today));
    m_datesError->present({});
    const auto row = static_cast<int>(std::ranges::find(spans, period.span()) - spans.begin());
    m_spans->setCurrentRow(row);
    presentSpan(period.span());
    const bool hasGrid = m_pages->currentIndex() == 0;
    open(hasGrid ? static_cast<QWidget*>(m_grid) : m_spans);
}

void PeriodPopover::retranslate()
{
    const auto& locale = InterfaceLanguage::tag();
    setAccessibleName(text("cells"));
    m_spans->setAccessibleName(text("spans"));
    for (int row = 0; row < m_spans->count(); ++row)
        m_spans->item(row)->setText(spanLabel(spans[static_cast<std::size_t>(row)], locale));
    m_earlier->setName(text("earlier"));
    m_later->setName(text("later"));
    m_allHint->setText(text("allFrom"));
    m_showAll->setText(text("show"));
    m_fromLabel->setText(text("from"));
    m_toLabel->setText(text("to"));
    m_from->setAccessibleName(text("from"));
    m_to->setAccessibleName(text("to"));
    m_apply->setText(text("apply"));
    if (isVisible())
        presentSpan(m_span);
}

void PeriodPopover::presentSpan(Span span)
{
    m_span = span;
    setFixedHeight(span == Span::day ? heightOfDays : heightOfOthers);
    if (span == Span::allTime) {
        m_allText->setText(
            word(periodWords(), "allEntries", {groupedNumber(m_counts.all(), InterfaceLanguage::tag())}));
        m_pages->setCurrentIndex(1);
    } else if (span == Span::dates) {
        m_pages->setCurrentIndex(2);
    } else {
        m_pages->setCurrentIndex(0);
        presentGrid();
    }
}

void PeriodPopover::presentGrid()
{
    const auto& locale = InterfaceLanguage::tag();
    auto grid = periodGrid(m_span, m_anchor, m_today, m_counts, locale);
    m_title->setText(grid.title);
    m_later->setEnabled(grid.hasNext);
    m_earlier->setEnabled(turnedPage(m_span, m_anchor, -1).has_value());
    m_countHint->setText(entriesPerLabel(m_span, locale));
    m_this->setText(thisPeriodLabel(m_span, locale));
    m_grid->present(std::move(grid), m_period, m_anchor);
}

void PeriodPopover::turnPage(int by)
{
    const auto turned = turnedPage(m_span, m_anchor, by);
    if (!turned || (by > 0 && !m_later->isEnabled()))
        return;
    m_anchor = std::min(*turned, std::max(m_counts.horizon(m_today), m_anchor));
    presentGrid();
}

void PeriodPopover::chooseDates()
{
    const auto period = Period::between(dayOf(m_from->date()), dayOf(m_to->date()));
    m_datesError->present(period ? QString{} : text("datesReversed"));
    if (period)
        choose(*period);
    else
        m_to->setFocus();
}

void PeriodPopover::choose(const Period& period)
{
    hide();
    Q_EMIT periodChosen(period);
}
