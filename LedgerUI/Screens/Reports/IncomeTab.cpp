#include "LedgerUI/Screens/Reports/IncomeTab.h"

#include <algorithm>
#include <array>

#include <QHBoxLayout>
#include <QSplitter>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Chart/ChartView.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGridModel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportPeriodGrid.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Reports/CurrencySegments.h"
#include "LedgerUI/Screens/Reports/ReportChart.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Level = ReportGridRow::Level;

constexpr std::array grains{Period::Span::day, Period::Span::week, Period::Span::month, Period::Span::quarter,
                            Period::Span::year};
constexpr int chartHeight = 200;
constexpr int trendWidth = 570;
constexpr int categoriesWidth = 390;
constexpr int categoriesMinimum = 340;

QString text(std::string_view key)
{
    return word(reportWords(), key);
}

QHBoxLayout* heading(std::initializer_list<QWidget*> parts)
{
    auto* row = new QHBoxLayout;
    row->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    row->setSpacing(Space::step2);
    for (auto* part : parts)
        row->addWidget(part);
    row->addStretch(1);
    return row;
}

}

IncomeTab::IncomeTab(QWidget* parent) : ReportTab{parent}
{
    setObjectName(QStringLiteral("incomeTab"));
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    splitter->addWidget(buildTrend());
    splitter->addWidget(buildCategories());
    splitter->setSizes({trendWidth, categoriesWidth});
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(buildStrip());
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(splitter, 1);
    bindParts();
}

QWidget* IncomeTab::buildStrip()
{
    auto* strip = new QWidget(this);
    strip->setFixedHeight(Space::filterRow);
    m_currency = new CurrencySegments(QStringLiteral("incomeCurrency"), strip);
    m_grain = new SegmentedControl(strip);
    m_grain->setObjectName(QStringLiteral("trendGrain"));
    for (const auto span : grains)
        m_grain->addSegment(static_cast<int>(span), {});
    m_side = new SegmentedControl(strip);
    m_side->setObjectName(QStringLiteral("categorySide"));
    for (const auto side : {Movement::expense, Movement::income})
        m_side->addSegment(static_cast<int>(side), {});
    auto* row = new QHBoxLayout(strip);
    row->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    row->setSpacing(Space::step3);
    row->addWidget(m_currency);
    row->addWidget(m_grain);
    row->addStretch(1);
    row->addWidget(m_side);
    return strip;
}

QWidget* IncomeTab::buildTrend()
{
    auto* part = new QWidget(this);
    m_chart = new ReportChart(QStringLiteral("trendChart"), part);
    m_chart->view().setMinimumHeight(chartHeight);
    m_table = new ReportTable(QStringLiteral("trendTable"), RowDelegate::Density::oneLine, part);
    auto* rows = new QVBoxLayout(part);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_chart, 1);
    rows->addWidget(m_table, 1);
    return part;
}

QWidget* IncomeTab::buildCategories()
{
    auto* part = new QWidget(this);
    part->setMinimumWidth(categoriesMinimum);
    m_title = new TextLabel(TypeStep::section, Token::text, part);
    m_of = new TextLabel(TypeStep::small, Token::text2, part);
    m_categories = new ReportTable(QStringLiteral("categoryTable"), RowDelegate::Density::oneLine, part);
    m_none = new TextLabel(TypeStep::body, Token::text2, part);
    m_none->setObjectName(QStringLiteral("categoriesNone"));
    m_none->setWordWrap(true);
    m_hint = new TextLabel(TypeStep::small, Token::text2, part);
    m_hint->setWordWrap(true);
    for (auto* label : {m_none, m_hint})
        label->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    auto* rows = new QVBoxLayout(part);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(heading({m_title, m_of}));
    rows->addWidget(m_categories, 1);
    rows->addWidget(m_none, 1, Qt::AlignTop);
    rows->addWidget(m_hint);
    return part;
}

void IncomeTab::bindParts()
{
    for (const auto* table : {m_table, m_categories})
        follow(*table);
    follow(*m_currency);
    connect(m_grain, &SegmentedControl::chosenByUser, this, [this](int id) {
        auto query = m_query;
        query.grain = static_cast<Period::Span>(id);
        query.part.reset();
        Q_EMIT queryWanted(query);
    });
    connect(m_side, &SegmentedControl::chosenByUser, this, [this](int id) {
        auto query = m_query;
        query.side = static_cast<Movement>(id);
        Q_EMIT queryWanted(query);
    });
    connect(&m_chart->view(), &ChartView::slotChosen, this, &IncomeTab::choosePart);
    follow(m_chart->view(), *m_table, [this](std::size_t at) { return ReportPeriodGrids::idOf(m_trend.periods[at]); });
    connect(m_table, &ReportTable::rowOpened, this, [this](const QString& id) {
        const auto found = std::ranges::find(m_trend.periods, id.toStdString(), &ReportPeriodGrids::idOf);
        choosePart(static_cast<std::size_t>(found - m_trend.periods.begin()));
    });
    connect(m_categories, &ReportTable::rowOpened, this, [this](const QString& id) { toggle(id.toStdString()); });
}

void IncomeTab::choosePart(std::size_t at)
{
    auto query = m_query;
    query.part = m_trend.periods[at];
    if (m_query.part == query.part)
        query.part.reset();
    Q_EMIT queryWanted(query);
}

void IncomeTab::toggle(const std::string& rowID)
{
    if (m_unfolded.erase(rowID) == 0)
        m_unfolded.insert(rowID);
    presentCategories();
}

void IncomeTab::present(const ReportSheet& sheet, const ChartColors& colors)
{
    m_query = sheet.query;
    m_trend = sheet.trend;
    m_colors = colors;
    presentSegments(sheet);
    m_chart->setTitle(text("trend.title"), qString(m_query.currency));
    m_chart->present(m_trend.chart, colors);
    m_table->present(m_trend.table, colors);
    if (m_trend.chosen)
        m_table->choose(ReportPeriodGrids::idOf(m_trend.periods[*m_trend.chosen]));
    m_title->setText(text("categories"));
    m_of->setText(m_trend.of);
    m_none->setText(text("categories.none"));
    m_hint->setText(text("categories.hint"));
    presentCategories();
}

void IncomeTab::presentSegments(const ReportSheet& sheet)
{
    presentCurrencies(*m_currency, sheet);
    m_grain->setName(text("grain"));
    for (const auto span : grains) {
        const bool isOffered = std::ranges::find(m_trend.grains, span) != m_trend.grains.end();
        m_grain->setSegmentText(static_cast<int>(span), spanLabel(span, InterfaceLanguage::tag()));
        m_grain->setSegmentEnabled(static_cast<int>(span), isOffered, isOffered ? QString{} : text("grain.tooMany"));
    }
    m_grain->choose(static_cast<int>(m_trend.grain));
    m_side->setName(text("side"));
    m_side->setSegmentText(static_cast<int>(Movement::expense), text("expense"));
    m_side->setSegmentText(static_cast<int>(Movement::income), text("income"));
    m_side->choose(static_cast<int>(m_query.side));
}

/// Children stand in the table only while their parent is unfolded.
void IncomeTab::presentCategories()
{
    auto shown = m_trend.categories;
    std::erase_if(shown.rows, [this](const ReportGridRow& row) {
        return !row.parentID.empty() && !m_unfolded.contains(row.parentID);
    });
    for (auto& row : shown.rows) {
        const bool isOpen = m_unfolded.contains(row.id);
        if (row.level != Level::parent)
            continue;
        row.cells.front().glyph = isOpen ? QStringLiteral("chevron-down") : QStringLiteral("chevron-right");
        row.cells.front().spoken =
            QStringLiteral("%1, %2").arg(row.cells.front().text, text(isOpen ? "fold.open" : "fold.closed"));
    }
    const bool hasAny = !shown.rows.empty();
    m_categories->present(std::move(shown), m_colors);
    m_categories->setVisible(hasAny);
    m_none->setVisible(!hasAny);
}

QList<QWidget*> IncomeTab::panes() const
{
    QList<QWidget*> all{m_currency, &m_chart->view(), m_table};
    if (!m_categories->isHidden())
        all.append(m_categories);
    return all;
}
