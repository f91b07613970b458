#include "LedgerUI/Screens/Capital/CapitalView.h"

#include <algorithm>

#include <QEvent>
#include <QHBoxLayout>
#include <QShortcut>
#include <QStackedWidget>
#include <QStringList>
#include <QTabBar>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Capital/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Capital/CapitalWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Presentation/Workspace/WorkspaceWords.h"
#include "LedgerUI/Screens/Capital/CapitalOverviewTab.h"
#include "LedgerUI/Screens/Capital/ContributionsTab.h"
#include "LedgerUI/Screens/Capital/DividendsTab.h"
#include "LedgerUI/Screens/Capital/RecordInks.h"
#include "LedgerUI/Theme/Space.h"

namespace {

QString text(std::string_view key)
{
    return word(capitalWords(), key);
}

std::string_view wordOf(CapitalModuleTab tab)
{
    switch (tab) {
    case CapitalModuleTab::overview:
        return "tab.overview";
    case CapitalModuleTab::contributions:
        return "tab.contributions";
    case CapitalModuleTab::dividends:
        return "tab.dividends";
    }
    return {};
}

void addDay(std::vector<std::uint32_t>& days, const std::string& day)
{
    const auto parsed = LedgerDay::parse(day);
    days.push_back(parsed ? dayNumber(*parsed) : 0);
}

/// The days on which something was recorded of capital and dividends, for the grid of periods.
PeriodCounts countsOf(const LedgerSnapshot& snapshot)
{
    std::vector<std::uint32_t> days;
    if (const auto& capital = snapshot.capital) {
        for (const auto& each : capital->contributions)
            addDay(days, each.date);
    }
    if (const auto& dividends = snapshot.dividends) {
        for (const auto& each : dividends->batches)
            addDay(days, each.date);
        for (const auto& each : dividends->movements)
            addDay(days, each.date);
    }
    return PeriodCounts{std::move(days)};
}

}

CapitalView::CapitalView(LedgerStore& store, QWidget* parent) : PageView{parent}, m_store{store}
{
    setObjectName(QStringLiteral("capitalView"));
    buildLayout();
    bind();
    adoptSnapshot();
}

void CapitalView::buildLayout()
{
    m_header = new PageHeader(this);
    auto* middle = new QWidget(m_header);
    m_period = new PeriodNavigator(middle);
    m_currency = new SegmentedControl(middle);
    m_currency->setObjectName(QStringLiteral("capitalCurrency"));
    auto* row = new QHBoxLayout(middle);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step2);
    row->addWidget(m_period);
    row->addWidget(m_currency);
    m_header->setMiddle(middle);

    auto* tabRow = new QFrame(this);
    tabRow->setFixedHeight(Space::tabRow);
    m_tabBar = new QTabBar(tabRow);
    m_tabBar->setObjectName(QStringLiteral("capitalTabs"));
    m_tabBar->setDrawBase(false);
    m_tabBar->setExpanding(false);
    m_tabBar->setUsesScrollButtons(false);
    m_tabBar->setElideMode(Qt::ElideNone);
    m_tabBar->setFocusPolicy(Qt::StrongFocus);
    auto* tabs = new QHBoxLayout(tabRow);
    tabs->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    tabs->addWidget(m_tabBar, 1, Qt::AlignBottom);

    m_stack = new QStackedWidget(this);
    m_overview = new CapitalOverviewTab(m_stack);
    m_contributions = new ContributionsTab(m_stack);
    m_dividends = new DividendsTab(m_stack);
    m_unavailable = new EmptyState(QStringLiteral("exclamation-triangle"), m_stack);
    m_unavailable->setObjectName(QStringLiteral("capitalUnavailable"));
    for (auto* each : {static_cast<QWidget*>(m_overview), static_cast<QWidget*>(m_contributions),
                       static_cast<QWidget*>(m_dividends), static_cast<QWidget*>(m_unavailable)}) {
        each->setMinimumSize(1, 1); // texts of tabs that were never shown would want more height than the window has
        m_stack->addWidget(each);
    }
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_header);
    rows->addWidget(tabRow);
    rows->addWidget(m_stack, 1);
}

void CapitalView::bind()
{
    connect(&m_store, &LedgerStore::snapshotChanged, this, &CapitalView::adoptSnapshot);
    connect(m_period, &PeriodNavigator::periodChosen, this, &CapitalView::choosePeriod);
    connect(m_currency, &SegmentedControl::chosenByUser, this, [this](int at) {
        m_question.currency = m_currencies[static_cast<std::size_t>(at)];
        m_choice = {};
        present();
    });
    connect(m_tabBar, &QTabBar::currentChanged, this, [this] {
        present();
        Q_EMIT statusContextChanged();
    });
    connect(m_contributions, &ContributionsTab::chosenChanged, this, &CapitalView::presentContribution);
    connect(m_dividends, &DividendsTab::choiceWanted, this, [this](const DividendChoice& choice) {
        m_choice = choice;
        // The table that asks is in the middle of its own change.
        QMetaObject::invokeMethod(this, &CapitalView::present, Qt::QueuedConnection);
    });
    const auto key = [this](const QKeySequence& keys, auto action) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    key(QKeySequence{QStringLiteral("Ctrl+Tab")}, [this] { stepTab(1); });
    key(QKeySequence{QStringLiteral("Ctrl+Shift+Tab")}, [this] { stepTab(-1); });
    for (const auto& keys : KeyBindings::keys(Command::previousPeriod))
        key(keys, [this] { m_period->goBack(); });
    for (const auto& keys : KeyBindings::keys(Command::nextPeriod))
        key(keys, [this] { m_period->goForward(); });
    for (const auto& keys : KeyBindings::keys(Command::toggleDetail))
        key(keys, [this] {
            if (tab() == CapitalModuleTab::contributions)
                m_contributions->toggleDetail();
        });
}

QList<QWidget*> CapitalView::panes() const
{
    QList<QWidget*> all;
    if (m_stack->currentWidget() == m_overview)
        all = m_overview->panes();
    else if (m_stack->currentWidget() == m_contributions)
        all = m_contributions->panes();
    else if (m_stack->currentWidget() == m_dividends)
        all = m_dividends->panes();
    all << m_tabBar << m_header;
    return all;
}

PageView::StatusContext CapitalView::statusContext() const
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return {};
    QStringList parts;
    const auto add = [&](std::string_view key, int revision) {
        parts << word(capitalWords(), key, {std::to_string(revision)});
    };
    const auto shown = tab();
    if (snapshot->capital && shown != CapitalModuleTab::dividends)
        add("revision.capital", snapshot->capital->revision);
    if (snapshot->dividends && shown != CapitalModuleTab::contributions)
        add("revision.dividends", snapshot->dividends->revision);
    return {.text = parts.join(QStringLiteral("  ·  ")), .figure = {}};
}

void CapitalView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        adoptSnapshot();
    PageView::changeEvent(event);
}

void CapitalView::adoptSnapshot()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    if (const auto today = LedgerDay::parse(m_store.today()); today && !m_isOpened) {
        m_question.period = Period::containing(Period::Span::year, *today);
        m_isOpened = true;
    }
    m_header->setTitle(word(workspaceWords(), "dividends"));
    m_unavailable->setTexts(text("unavailable"), {});
    presentTabs();
    presentCurrencies();
    present();
    Q_EMIT statusContextChanged();
}

void CapitalView::presentTabs()
{
    const auto tabs = FinancialFeaturePolicy::activeTabs(*m_store.snapshot());
    const QSignalBlocker quietly{m_tabBar};
    if (tabs != m_tabs) {
        const auto before = m_tabs.empty() ? CapitalModuleTab::overview : tab();
        while (m_tabBar->count() > 0)
            m_tabBar->removeTab(0);
        m_tabs = tabs;
        for (const auto each : m_tabs)
            m_tabBar->addTab(text(wordOf(each)));
        const auto kept = std::ranges::find(m_tabs, before);
        m_tabBar->setCurrentIndex(kept == m_tabs.end() ? 0 : static_cast<int>(kept - m_tabs.begin()));
    }
    for (std::size_t at = 0; at < m_tabs.size(); ++at)
        m_tabBar->setTabText(static_cast<int>(at), text(wordOf(m_tabs[at])));
    m_tabBar->setAccessibleName(word(workspaceWords(), "dividends"));
}

void CapitalView::presentCurrencies()
{
    auto currencies = CapitalCurrencies::of(*m_store.snapshot());
    m_question.currency = CapitalCurrencies::chosen(currencies, m_question.currency);
    m_currency->setName(text("currency"));
    if (currencies != m_currencies) {
        m_currencies = std::move(currencies);
        m_currency->clear();
        for (std::size_t at = 0; at < m_currencies.size(); ++at)
            m_currency->addSegment(static_cast<int>(at), QString::fromStdString(m_currencies[at]));
    }
    const auto at = std::ranges::find(m_currencies, m_question.currency);
    if (at != m_currencies.end())
        m_currency->choose(static_cast<int>(at - m_currencies.begin()));
    m_currency->setVisible(m_currencies.size() > 1);
}

void CapitalView::choosePeriod(const Period& period)
{
    m_question.period = period;
    present();
}

void CapitalView::present()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot || m_tabs.empty())
        return;
    const auto today = LedgerDay::parse(m_store.today());
    m_period->present(m_question.period, countsOf(*snapshot), today.value_or(std::chrono::year_month_day{}));
    switch (tab()) {
    case CapitalModuleTab::overview:
        presentOverview();
        break;
    case CapitalModuleTab::contributions:
        presentContributions();
        break;
    case CapitalModuleTab::dividends:
        presentDividends();
        break;
    }
}

void CapitalView::presentOverview()
{
    const auto snapshot = m_store.snapshot();
    const auto shown = CapitalOverviews::overview(*snapshot, m_question, m_store.today(), InterfaceLanguage::tag());
    if (!shown) {
        const bool isCapital = shown.error() == CapitalOverviews::Unavailable::capital;
        showUnavailable(isCapital ? refusalText(CapitalRefusal::integrity, InterfaceLanguage::tag())
                                  : refusalText(DividendRefusal::integrity, InterfaceLanguage::tag()));
        return;
    }
    m_overview->present(*shown, RecordInks{*snapshot});
    m_stack->setCurrentWidget(m_overview);
}

void CapitalView::presentContributions()
{
    const auto snapshot = m_store.snapshot();
    const auto shown = ContributionLists::list(*snapshot, m_question, InterfaceLanguage::tag());
    if (!shown)
        return showUnavailable(refusalText(CapitalRefusal::integrity, InterfaceLanguage::tag()));
    m_contributions->present(*shown, RecordInks{*snapshot});
    m_stack->setCurrentWidget(m_contributions);
    presentContribution();
}

void CapitalView::presentContribution()
{
    const auto snapshot = m_store.snapshot();
    if (snapshot)
        m_contributions->presentDetail(
            ContributionLists::detail(*snapshot, m_contributions->chosen(), m_store.today(), InterfaceLanguage::tag()),
            RecordInks{*snapshot});
}

void CapitalView::presentDividends()
{
    const auto snapshot = m_store.snapshot();
    const auto shown = DividendBoards::board(*snapshot, m_question, m_choice, InterfaceLanguage::tag());
    if (!shown)
        return showUnavailable(refusalText(DividendRefusal::integrity, InterfaceLanguage::tag()));
    m_choice = shown->choice;
    m_dividends->present(*shown, RecordInks{*snapshot});
    m_stack->setCurrentWidget(m_dividends);
}

/// Never a part of the figures where the whole does not verify.
void CapitalView::showUnavailable(const QString& why)
{
    m_unavailable->setTexts(text("unavailable"), why);
    m_stack->setCurrentWidget(m_unavailable);
}

void CapitalView::stepTab(int by)
{
    const int count = m_tabBar->count();
    if (count > 0)
        m_tabBar->setCurrentIndex((m_tabBar->currentIndex() + by + count) % count);
}

CapitalModuleTab CapitalView::tab() const
{
    const auto at = static_cast<std::size_t>(std::max(0, m_tabBar->currentIndex()));
    return at < m_tabs.size() ? m_tabs[at] : CapitalModuleTab::overview;
}
