#include "LedgerUI/Screens/Capital/CapitalView.h"

#include <algorithm>

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QShortcut>
#include <QStackedWidget>
#include <QStringList>
#include <QTabBar>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Page/PageTabs.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Capital/CapitalPlace.h"
#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Records/CapitalSections.h"
#include "LedgerUI/Presentation/Records/CapitalWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Presentation/Workspace/WorkspaceWords.h"
#include "LedgerUI/Screens/Capital/CapitalOverviewTab.h"
#include "LedgerUI/Screens/Capital/CapitalPageActions.h"
#include "LedgerUI/Screens/Capital/CapitalPrinting.h"
#include "LedgerUI/Screens/Capital/ContributionsTab.h"
#include "LedgerUI/Screens/Dividends/DividendsTab.h"
#include "LedgerUI/Screens/Records/RecordHead.h"
#include "LedgerUI/Screens/Records/RecordInks.h"
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

/// The name of a tab in the row of tabs.
QString idOf(CapitalModuleTab tab)
{
    return QString::fromLatin1(wordOf(tab).data());
}

}

CapitalView::CapitalView(LedgerStore& store, QWidget* parent) : PageView{parent}, m_store{store}
{
    setObjectName(QStringLiteral("capitalView"));
    m_actions = new CapitalPageActions(store, *this);
    m_printing = new ActionSet(this);
    m_printing->present(CapitalPrinting::actions(store, {}, *this, {}));
    buildLayout();
    bind();
    adoptSnapshot();
    QMetaObject::invokeMethod(m_actions, &CapitalPageActions::offerUnconfirmed, Qt::QueuedConnection);
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

    m_tabRow = new PageTabs(QStringLiteral("capitalTabs"), this);
    m_overview = addPlace<CapitalOverviewTab>(CapitalModuleTab::overview);
    m_contributions = addPlace<ContributionsTab>(CapitalModuleTab::contributions);
    m_dividends = addPlace<DividendsTab>(CapitalModuleTab::dividends);
    placeActions();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_header);
    rows->addWidget(m_tabRow, 1);
}

template <class Contents>
Contents* CapitalView::addPlace(CapitalModuleTab tab)
{
    auto* place = new QStackedWidget(m_tabRow->place());
    place->setMinimumSize(1, 1); // texts of tabs that were never shown would want more height than the window has
    auto* unavailable = new EmptyState(QStringLiteral("exclamation-triangle"), place);
    unavailable->setObjectName(QStringLiteral("capitalUnavailable"));
    auto* contents = new Contents(place);
    place->addWidget(contents);
    place->addWidget(unavailable);
    m_places[tab] = place;
    m_tabRow->setContents(idOf(tab), place);
    return contents;
}

/// Each action has its button where it is needed.
void CapitalView::placeActions()
{
    const auto action = [this](const char* id) { return (*m_actions)[id]; };
    for (auto* each : {action("exportCapital"), action("exportDividends"),
                       (*m_printing)[QStringLiteral("printCapital")], action("payAdvance"), action("participants")})
        m_header->addSecondary(each);
    for (const auto* id : {"contribute", "allocate"}) {
        auto* button = new PrimaryButton(m_header);
        followAction(*button, *action(id));
        m_header->setPrimary(button);
    }
    m_overview->setHistoryAction(action("history"));
    m_overview->ownersHead().addAction(action("owners"));
    m_overview->ownershipHead().addAction(action("ownership"));
    m_contributions->setHistoryAction(action("history"));
    m_contributions->baselineHead().addAction(action("supersede"));
    m_contributions->setReverseAction(action("reverseContribution"));
    m_dividends->batchHead().addAction(action("cancelBatch"));
    m_dividends->personHead().addGlyph((*m_printing)[QStringLiteral("printStatement")]);
    m_dividends->personHead().addAction(action("applyAdvance"));
    m_dividends->personHead().addAction(action("returnAdvance"));
    m_dividends->personHead().addAction(action("pay"), true);
    m_dividends->movementHead().addAction(action("reverseMovement"));
    m_dividends->movementHead().addAction(action("openMovement"));
}

void CapitalView::bind()
{
    connect(&m_store, &LedgerStore::snapshotChanged, this, &CapitalView::adoptSnapshot);
    connect(m_period, &PeriodNavigator::periodChosen, this, &CapitalView::choosePeriod);
    connect(m_currency, &SegmentedControl::chosenByUser, this,
            [this](int at) { chooseCurrency(m_currencies[static_cast<std::size_t>(at)]); });
    connect(m_tabRow, &PageTabs::chosenChanged, this, [this] {
        present();
        Q_EMIT statusContextChanged();
    });
    connect(&m_store, &LedgerStore::isBusyChanged, this, &CapitalView::presentActions);
    connect(m_actions, &CapitalPageActions::done, this, &CapitalView::done);
    connect(m_actions, &CapitalPageActions::recordedIn, this, [this](const QString& currency) {
        chooseCurrency(currency.toStdString());
        presentCurrencies();
    });
    connect(m_actions, &CapitalPageActions::entryWanted, this, &CapitalView::showEntry);
    connect(m_overview, &CapitalOverviewTab::entryWanted, this, &CapitalView::showEntry);
    connect(m_overview, &CapitalOverviewTab::entryRefused, this, &CapitalView::done);
    connect(m_overview, &CapitalOverviewTab::settlementWanted, this, &CapitalView::showSettlement);
    connect(m_contributions, &ContributionsTab::entryWanted, this, &CapitalView::showEntry);
    connect(m_contributions, &ContributionsTab::chosenChanged, this, [this] {
        presentContribution();
        presentActions(); // one of them is about the chosen contribution
    });
    connect(m_dividends, &DividendsTab::movementChosen, this, &CapitalView::presentActions);
    connect(m_dividends, &DividendsTab::movementOpened, (*m_actions)["openMovement"], &QAction::trigger);
    connect(m_dividends, &DividendsTab::choiceWanted, this, [this](const DividendChoice& choice) {
        m_wanted = choice;
        // The table that asks is in the middle of its own change.
        QMetaObject::invokeMethod(this, &CapitalView::present, Qt::QueuedConnection);
    });
    const auto key = [this](const QKeySequence& keys, auto action) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
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
    if (m_places.at(tab())->currentIndex() != 0)
        all.clear(); // nothing of the contents can be seen
    else if (tab() == CapitalModuleTab::overview)
        all = m_overview->panes();
    else if (tab() == CapitalModuleTab::contributions)
        all = m_contributions->panes();
    else
        all = m_dividends->panes();
    all << &m_tabRow->row() << m_header;
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
    const auto& capital = snapshot->capital;
    if (capital && shown != CapitalModuleTab::dividends)
        add("revision.capital", capital->revision);
    const auto& dividends = snapshot->dividends;
    if (dividends && shown != CapitalModuleTab::contributions)
        add("revision.dividends", dividends->revision);
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
    presentTabs();
    presentCurrencies();
    present();
    Q_EMIT statusContextChanged();
}

void CapitalView::presentTabs()
{
    m_tabs = FinancialFeaturePolicy::activeTabs(*m_store.snapshot());
    std::vector<PageTabs::Tab> shown;
    shown.reserve(m_tabs.size());
    for (const auto each : m_tabs)
        shown.push_back({.id = idOf(each), .text = text(wordOf(each))});
    m_tabRow->present(shown);
    m_tabRow->setName(word(workspaceWords(), "dividends"));
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

void CapitalView::chooseCurrency(const std::string& currency)
{
    if (currency == m_question.currency)
        return;
    m_question.currency = currency;
    m_wanted = {};
    present();
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
    m_period->present(m_question.period, CapitalPlaces::countsOf(*snapshot),
                      today.value_or(std::chrono::year_month_day{}));
    if (CapitalSections::isSeen(tab(), *snapshot))
        presentTab();
    else
        showInstead(text("notSeen"), text("notSeen.body"));
    presentActions();
}

void CapitalView::presentTab()
{
    switch (tab()) {
    case CapitalModuleTab::overview:
        return presentOverview();
    case CapitalModuleTab::contributions:
        return presentContributions();
    case CapitalModuleTab::dividends:
        return presentDividends();
    }
}

void CapitalView::presentOverview()
{
    const auto snapshot = m_store.snapshot();
    const auto shown = CapitalOverviews::overview(*snapshot, m_question, m_store.today(), InterfaceLanguage::tag());
    if (!shown) {
        const bool isCapital = shown.error() == CapitalOverviews::Unavailable::capital;
        return showUnavailable(isCapital ? refusalText(CapitalRefusal::integrity, InterfaceLanguage::tag())
                                         : refusalText(DividendRefusal::integrity, InterfaceLanguage::tag()));
    }
    m_overview->present(*shown, RecordInks{*snapshot});
    showContents();
}

void CapitalView::presentContributions()
{
    const auto snapshot = m_store.snapshot();
    const auto shown = ContributionLists::list(*snapshot, m_question, InterfaceLanguage::tag());
    if (!shown)
        return showUnavailable(refusalText(CapitalRefusal::integrity, InterfaceLanguage::tag()));
    m_contributions->present(*shown, RecordInks{*snapshot});
    showContents();
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
    const auto shown = DividendBoards::board(*snapshot, m_question, m_wanted, InterfaceLanguage::tag());
    if (!shown)
        return showUnavailable(refusalText(DividendRefusal::integrity, InterfaceLanguage::tag()));
    m_choice = shown->choice;
    m_dividends->present(*shown, RecordInks{*snapshot});
    showContents();
}

/// Never a part of the figures where the whole does not verify.
void CapitalView::showUnavailable(const QString& why)
{
    showInstead(text("unavailable"), why);
}

void CapitalView::showInstead(const QString& what, const QString& why)
{
    auto* place = m_places.at(tab());
    static_cast<EmptyState*>(place->widget(1))->setTexts(what, why);
    place->setCurrentIndex(1);
}

void CapitalView::showContents()
{
    m_places.at(tab())->setCurrentIndex(0);
}

CapitalModuleTab CapitalView::tab() const
{
    for (const auto each : m_tabs) {
        if (idOf(each) == m_tabRow->chosen())
            return each;
    }
    return CapitalModuleTab::overview;
}

void CapitalView::presentActions()
{
    m_actions->present({.tab = tab(),
                        .currency = m_question.currency,
                        .contributionID = m_contributions->chosen(),
                        .choice = m_choice,
                        .movementID = m_dividends->chosenMovement(),
                        .movementEntry = m_dividends->chosenEntry()});
    presentPrinting();
}

void CapitalView::presentPrinting()
{
    const bool isWhole = m_places.at(tab())->currentIndex() == 0;
    const auto participant = tab() == CapitalModuleTab::dividends ? m_choice.participantID : std::string{};
    m_printing->present(CapitalPrinting::actions(
        m_store, {.tab = tab(), .question = m_question, .isWhole = isWhole, .participantID = participant}, *this,
        [this](const QString& what) { Q_EMIT done(what); }));
}

/// How the participant stands; nobody else's settlement where there is none of theirs.
void CapitalView::showSettlement(const QString& participantID)
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot || participantID.isEmpty() || std::ranges::find(m_tabs, CapitalModuleTab::dividends) == m_tabs.end())
        return;
    const auto place =
        CapitalPlaces::settlementOf(participantID.toStdString(), *snapshot, m_question, InterfaceLanguage::tag());
    if (place)
        goTo(*place);
    else
        Q_EMIT done(word(capitalWords(), "settlement.none", {m_question.currency}));
}

void CapitalView::showEntry(const QString& id)
{
    if (!id.isEmpty())
        Q_EMIT linkPressed(
            {.page = WorkspacePage::ledger, .action = PageAction::showEntry, .subject = id.toStdString()});
}

void CapitalView::follow(const PageLink& link)
{
    const auto snapshot = m_store.snapshot();
    const auto place = snapshot ? CapitalPlaces::placeOf(link, *snapshot) : std::nullopt;
    if (!place)
        return;
    goTo(*place);
    if (place->tab == CapitalModuleTab::contributions)
        m_contributions->choose(link.subject);
    else if (link.action == PageAction::showMovement)
        m_dividends->chooseMovement(link.subject);
}

/// The tab and the currency of a record, and a year that holds it.
void CapitalView::goTo(const CapitalPlace& place)
{
    m_question.currency = place.currency;
    if (const auto day = LedgerDay::parse(place.date); day && !m_question.period.contains(place.date))
        m_question.period = Period::containing(Period::Span::year, *day);
    presentCurrencies();
    if (place.tab == CapitalModuleTab::dividends)
        m_wanted = place.choice;
    m_tabRow->choose(idOf(place.tab));
    present();
}
