#include "LedgerUI/Screens/Reports/OverviewTab.h"

#include <algorithm>
#include <utility>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollArea>
#include <QVBoxLayout>

#include "LedgerUI/Components/Chart/ChartView.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGridModel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportPeriodGrid.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Reports/AttentionList.h"
#include "LedgerUI/Screens/Reports/ReportChart.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Theme/Space.h"

namespace {

/// How much each part shows.
struct Extent {
    int chartHeight;
    int categories;
    std::size_t attention;
};
constexpr Extent wide{.chartHeight = 236, .categories = 7, .attention = 4};
constexpr Extent narrow{.chartHeight = 180, .categories = 5, .attention = 2};

constexpr int currenciesShown = 7;
constexpr int categoriesWidth = 359;
constexpr int monthsShown = 12;

std::string idOf(std::chrono::year_month month)
{
    return ReportPeriodGrids::idOf(Period::containing(Period::Span::month, month / 1));
}

QHBoxLayout* heading(TextLabel* title, TextLabel* currency)
{
    auto* row = new QHBoxLayout;
    row->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, 0);
    row->setSpacing(Space::step2);
    row->addWidget(title);
    row->addWidget(currency);
    row->addStretch(1);
    return row;
}

QHBoxLayout* sideBySide(QWidget* left, QWidget* right, QWidget* parent)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(left, 1);
    row->addWidget(new Line(Qt::Vertical, parent));
    row->addWidget(right);
    return row;
}

TextLabel* quietLine(const char* name, QWidget* parent)
{
    auto* label = new TextLabel(TypeStep::body, Token::text2, parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setWordWrap(true);
    label->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step4);
    return label;
}

}

OverviewTab::OverviewTab(Beside beside, QWidget* parent) : ReportTab{parent}, m_beside{std::move(beside)}
{
    setObjectName(QStringLiteral("overviewTab"));
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* body = new QWidget(scroll->viewport());
    m_currencies = new ReportTable(QStringLiteral("currencyTable"), RowDelegate::Density::oneLine, body);
    m_currencies->showWhole(currenciesShown);
    m_attention = new AttentionList(body);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_currencies);
    rows->addLayout(
        sideBySide(buildChart(body), buildCategories(m_expenses, {"expenseTable", "expensesNone"}, body), body));
    rows->addWidget(new Line(Qt::Horizontal, body));
    rows->addWidget(m_attention);
    rows->addWidget(new Line(Qt::Horizontal, body));
    rows->addLayout(
        sideBySide(buildMonths(body), buildCategories(m_income, {"incomeCategoryTable", "incomeNone"}, body), body));
    rows->addStretch(1);
    scroll->setWidget(body);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);
    bindParts();
}

ReportChart* OverviewTab::buildChart(QWidget* parent)
{
    m_chart = new ReportChart(QStringLiteral("chart"), parent);
    m_chart->view().setMinimumHeight(wide.chartHeight);
    // As high as the categories beside it.
    m_chart->view().setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    return m_chart;
}

/// The chart's months in figures.
QWidget* OverviewTab::buildMonths(QWidget* parent)
{
    auto* part = new QWidget(parent);
    m_monthsTitle = new TextLabel(TypeStep::section, Token::text, part);
    m_monthsCurrency = new TextLabel(TypeStep::small, Token::text2, part);
    m_monthTable = new ReportTable(QStringLiteral("monthTable"), RowDelegate::Density::oneLine, part);
    m_monthTable->showWhole(monthsShown);
    auto* rows = new QVBoxLayout(part);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(heading(m_monthsTitle, m_monthsCurrency));
    rows->addSpacing(Space::step1);
    rows->addWidget(m_monthTable);
    rows->addStretch(1);
    return part;
}

QWidget* OverviewTab::buildCategories(Categories& made, const CategoryNames& names, QWidget* parent)
{
    auto* part = new QWidget(parent);
    part->setFixedWidth(categoriesWidth);
    made.title = new TextLabel(TypeStep::section, Token::text, part);
    made.currency = new TextLabel(TypeStep::small, Token::text2, part);
    made.table = new ReportTable(QString::fromLatin1(names.table), RowDelegate::Density::list, part);
    made.table->horizontalHeader()->hide();
    made.table->showWhole(wide.categories);
    made.none = quietLine(names.none, part);
    auto* rows = new QVBoxLayout(part);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(heading(made.title, made.currency));
    rows->addSpacing(Space::step1);
    rows->addWidget(made.table);
    rows->addWidget(made.none);
    rows->addStretch(1);
    return part;
}

void OverviewTab::bindParts()
{
    for (const auto* table : {m_currencies, m_expenses.table, m_monthTable, m_income.table})
        follow(*table);
    connect(m_currencies, &ReportTable::rowChosen, this, [this](const QString& code) {
        auto query = m_query;
        query.currency = code.toStdString();
        if (query != m_query)
            Q_EMIT queryWanted(query);
    });
    // A currency opened is looked at in its categories.
    connect(m_currencies, &ReportTable::rowOpened, this, [this] { Q_EMIT tabWanted(QStringLiteral("income")); });
    connect(&m_chart->view(), &ChartView::slotChosen, this, &OverviewTab::chooseMonth);
    follow(m_chart->view(), *m_monthTable, [this](std::size_t at) { return idOf(m_months[at]); });
    connect(m_monthTable, &ReportTable::rowOpened, this, [this](const QString& id) {
        const auto found = std::ranges::find(m_months, id.toStdString(), idOf);
        chooseMonth(static_cast<std::size_t>(found - m_months.begin()));
    });
    connect(m_attention, &AttentionList::wanted, this, &ReportTab::attentionWanted);
}

void OverviewTab::chooseMonth(std::size_t at)
{
    auto query = m_query;
    query.period = Period::containing(Period::Span::month, m_months[at] / 1);
    query.part.reset();
    if (query != m_query)
        Q_EMIT queryWanted(query);
}

void OverviewTab::present(const ReportSheet& sheet, const ChartColors& colors)
{
    const auto text = [](std::string_view key) { return word(reportWords(), key); };
    m_query = sheet.query;
    m_months = sheet.overview.months;
    m_currencies->present(sheet.currencies, colors);
    if (m_currencies->selectedIDs() != std::vector{sheet.query.currency})
        m_currencies->choose(sheet.query.currency);
    const auto code = QString::fromStdString(sheet.query.currency);
    m_chart->setTitle(text("chart"), code);
    m_chart->present(sheet.overview.chart, colors, text("chart.none"));
    m_monthsTitle->setText(text("table.months"));
    m_monthsCurrency->setText(code);
    m_monthTable->present(sheet.months, colors);
    m_monthTable->setVisible(!sheet.months.rows.empty());
    presentCategories(m_expenses, sheet.largestExpenses, "expenses.none", colors);
    presentCategories(m_income, sheet.largestIncome, "income.none", colors);
    auto attention = m_beside();
    attention.insert(attention.end(), sheet.attention.begin(), sheet.attention.end());
    m_attention->present(std::move(attention));
}

void OverviewTab::presentCategories(const Categories& shown, const ReportGrid& grid, std::string_view none,
                                    const ChartColors& colors)
{
    shown.title->setText(grid.name);
    shown.currency->setText(QString::fromStdString(m_query.currency));
    shown.table->present(grid, colors);
    shown.table->setVisible(!grid.rows.empty());
    shown.none->setText(word(reportWords(), none));
    shown.none->setVisible(grid.rows.empty());
}

void OverviewTab::resizeEvent(QResizeEvent* event)
{
    ReportTab::resizeEvent(event);
    const bool isNarrow = window()->width() < Space::foldBelow;
    const auto& extent = isNarrow ? narrow : wide;
    m_chart->view().setMinimumHeight(extent.chartHeight);
    m_chart->showTitle(!isNarrow);
    m_expenses.table->showWhole(extent.categories);
    m_income.table->showWhole(extent.categories);
    m_attention->showFirst(extent.attention);
}

QList<QWidget*> OverviewTab::panes() const
{
    QList<QWidget*> all{m_currencies};
    const auto add = [&all](QWidget* pane) {
        if (!pane->isHidden())
            all.append(pane);
    };
    add(&m_chart->view());
    add(m_expenses.table);
    if (m_attention->firstStop())
        all.append(m_attention);
    add(m_monthTable);
    add(m_income.table);
    return all;
}
