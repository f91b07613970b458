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
#include "LedgerUI/Presentation/Reports/ReportWords.h"
#include "LedgerUI/Screens/Reports/AttentionList.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int currenciesShown = 7;
constexpr int expensesShown = 7;
constexpr int expensesWidth = 359;
constexpr int chartHeight = 236;

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
    auto* body = new QWidget(scroll);
    m_currencies = new ReportTable(QStringLiteral("currencyTable"), RowDelegate::Density::oneLine, body);
    m_currencies->showWhole(currenciesShown);
    m_attention = new AttentionList(body);
    auto* split = new QHBoxLayout;
    split->setSpacing(0);
    split->addWidget(buildChart(), 1);
    split->addWidget(new Line(Qt::Vertical, body));
    split->addWidget(buildExpenses());
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_currencies);
    rows->addLayout(split);
    rows->addWidget(new Line(Qt::Horizontal, body));
    rows->addWidget(m_attention);
    rows->addStretch(1);
    scroll->setWidget(body);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);
    bindParts();
}

QWidget* OverviewTab::buildChart()
{
    auto* part = new QWidget(this);
    m_chartTitle = new TextLabel(TypeStep::section, Token::text, part);
    m_chartCurrency = new TextLabel(TypeStep::small, Token::text2, part);
    m_chart = new ChartView(part);
    m_chart->setMinimumHeight(chartHeight);
    m_chartNone = quietLine("chartNone", part);
    auto* inset = new QVBoxLayout;
    inset->setContentsMargins(Space::pageMargin - 2, Space::step1, Space::pageMargin - 2, Space::step2);
    inset->addWidget(m_chart);
    auto* rows = new QVBoxLayout(part);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(heading(m_chartTitle, m_chartCurrency));
    rows->addLayout(inset, 1);
    rows->addWidget(m_chartNone);
    return part;
}

QWidget* OverviewTab::buildExpenses()
{
    auto* part = new QWidget(this);
    part->setFixedWidth(expensesWidth);
    m_expensesTitle = new TextLabel(TypeStep::section, Token::text, part);
    m_expensesCurrency = new TextLabel(TypeStep::small, Token::text2, part);
    m_expenses = new ReportTable(QStringLiteral("expenseTable"), RowDelegate::Density::twoLines, part);
    m_expenses->horizontalHeader()->hide();
    m_expenses->showWhole(expensesShown);
    m_expensesNone = quietLine("expensesNone", part);
    auto* rows = new QVBoxLayout(part);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(heading(m_expensesTitle, m_expensesCurrency));
    rows->addSpacing(Space::step1);
    rows->addWidget(m_expenses);
    rows->addWidget(m_expensesNone);
    rows->addStretch(1);
    return part;
}

void OverviewTab::bindParts()
{
    for (const auto* table : {m_currencies, m_expenses})
        follow(*table);
    connect(m_currencies, &ReportTable::rowChosen, this, [this](const QString& code) {
        auto query = m_query;
        query.currency = code.toStdString();
        if (query != m_query)
            Q_EMIT queryWanted(query);
    });
    // A currency opened is looked at in its categories.
    connect(m_currencies, &ReportTable::rowOpened, this, [this] { Q_EMIT tabWanted(QStringLiteral("income")); });
    connect(m_chart, &ChartView::slotChosen, this, [this](std::size_t slot) {
        auto query = m_query;
        query.period = Period::containing(Period::Span::month, m_months[slot] / 1);
        query.part.reset();
        if (query != m_query)
            Q_EMIT queryWanted(query);
    });
    connect(m_attention, &AttentionList::wanted, this, &ReportTab::attentionWanted);
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
    m_chartTitle->setText(text("chart"));
    m_chartCurrency->setText(code);
    const bool hasChart = ChartLayouts::hasMovement(sheet.overview.chart);
    m_chart->setVisible(hasChart);
    m_chart->setAccessibleName(QStringLiteral("%1, %2").arg(text("chart"), code));
    if (hasChart)
        m_chart->present(sheet.overview.chart, colors);
    m_chartNone->setText(text("chart.none"));
    m_chartNone->setVisible(!hasChart);
    m_expensesTitle->setText(text("table.expenses"));
    m_expensesCurrency->setText(code);
    const bool hasExpenses = !sheet.largestExpenses.rows.empty();
    m_expenses->present(sheet.largestExpenses, colors);
    m_expenses->setVisible(hasExpenses);
    m_expensesNone->setText(text("expenses.none"));
    m_expensesNone->setVisible(!hasExpenses);
    auto attention = m_beside();
    attention.insert(attention.end(), sheet.attention.begin(), sheet.attention.end());
    m_attention->present(std::move(attention));
}

QList<QWidget*> OverviewTab::panes() const
{
    QList<QWidget*> all{m_currencies};
    for (auto* pane : {static_cast<QWidget*>(m_chart), static_cast<QWidget*>(m_expenses)}) {
        if (!pane->isHidden())
            all.append(pane);
    }
    if (m_attention->firstStop())
        all.append(m_attention);
    return all;
}
