#include "LedgerUI/Screens/Capital/CapitalView.h"

#include <QAction>
#include <QEvent>
#include <QShortcut>
#include <QStringList>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Page/PlainRows.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Capital/CapitalPlace.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Records/CapitalSections.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Capital/CapitalOverviewTab.h"
#include "LedgerUI/Screens/Capital/CapitalPageActions.h"
#include "LedgerUI/Screens/Capital/CapitalPrinting.h"
#include "LedgerUI/Screens/Capital/CapitalQuestionBar.h"
#include "LedgerUI/Screens/Capital/CapitalTabs.h"
#include "LedgerUI/Screens/Capital/ContributionsTab.h"
#include "LedgerUI/Screens/Dividends/DividendsTab.h"
#include "LedgerUI/Screens/Records/RecordHead.h"

CapitalView::CapitalView(LedgerStore& store, QWidget* parent) : PageView{parent}, m_store{store}
{
    setObjectName(QStringLiteral("capitalView"));
    m_actions = new CapitalPageActions(store, *this);
    m_printing = new ActionSet(this);
    m_printing->present(CapitalPrinting::actions(store, {}, *this, {}));
    buildLayout();
    bind();
    adoptSnapshot();
}

void CapitalView::buildLayout()
{
    m_header = new PageHeader(this);
    m_bar = new CapitalQuestionBar(m_store, m_header);
    m_header->setMiddle(m_bar);
    m_tabs = new CapitalTabs(m_store, this);
    placeActions();
    auto* rows = plainRows(this);
    rows->addWidget(m_header);
    rows->addWidget(m_tabs, 1);
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
    auto& overview = m_tabs->overview();
    auto& contributions = m_tabs->contributions();
    const auto& dividends = m_tabs->dividends();
    overview.setHistoryAction(action("history"));
    overview.ownersHead().addAction(action("owners"));
    overview.ownershipHead().addAction(action("ownership"));
    contributions.setHistoryAction(action("history"));
    contributions.baselineHead().addAction(action("supersede"));
    contributions.setReverseAction(action("reverseContribution"));
    dividends.batchHead().addAction(action("cancelBatch"));
    dividends.personHead().addGlyph((*m_printing)[QStringLiteral("printStatement")]);
    dividends.personHead().addAction(action("applyAdvance"));
    dividends.personHead().addAction(action("returnAdvance"));
    dividends.personHead().addAction(action("pay"), true);
    dividends.movementHead().addAction(action("reverseMovement"));
    dividends.movementHead().addAction(action("openMovement"));
}

void CapitalView::bind()
{
    connect(&m_store, &LedgerStore::snapshotChanged, this, &CapitalView::adoptSnapshot);
    connect(m_bar, &CapitalQuestionBar::periodChosen, this, &CapitalView::present);
    connect(m_bar, &CapitalQuestionBar::currencyChosen, this, [this] {
        m_wanted = {};
        present();
    });
    connect(m_tabs, &CapitalTabs::chosenChanged, this, [this] {
        present();
        Q_EMIT statusContextChanged();
    });
    connect(&m_store, &LedgerStore::isBusyChanged, this, &CapitalView::presentActions);
    // What an ended session left opens in the window that the page stands in.
    connect(this, &PageView::firstSeen, m_actions, &CapitalPageActions::offerUnconfirmed, Qt::QueuedConnection);
    connect(m_actions, &CapitalPageActions::done, this, &CapitalView::done);
    connect(m_actions, &CapitalPageActions::recordedIn, this, [this](const QString& currency) {
        m_bar->chooseCurrency(currency.toStdString());
        m_bar->presentCurrencies();
    });
    connect(m_actions, &CapitalPageActions::entryWanted, this, &CapitalView::showEntry);
    connect(&m_tabs->overview(), &CapitalOverviewTab::entryWanted, this, &CapitalView::showEntry);
    connect(&m_tabs->overview(), &CapitalOverviewTab::entryRefused, this, &CapitalView::done);
    connect(&m_tabs->overview(), &CapitalOverviewTab::settlementWanted, this, &CapitalView::showSettlement);
    connect(&m_tabs->contributions(), &ContributionsTab::entryWanted, this, &CapitalView::showEntry);
    connect(&m_tabs->contributions(), &ContributionsTab::chosenChanged, this, [this] {
        m_tabs->presentContribution();
        presentActions(); // one of them is about the chosen contribution
    });
    connect(&m_tabs->dividends(), &DividendsTab::movementChosen, this, &CapitalView::presentActions);
    connect(&m_tabs->dividends(), &DividendsTab::movementOpened, (*m_actions)["openMovement"], &QAction::trigger);
    connect(&m_tabs->dividends(), &DividendsTab::choiceWanted, this, [this](const DividendChoice& choice) {
        m_wanted = choice;
        // The table that asks is in the middle of its own change.
        QMetaObject::invokeMethod(this, &CapitalView::present, Qt::QueuedConnection);
    });
    bindKeys();
}

void CapitalView::bindKeys()
{
    const auto key = [this](const QKeySequence& keys, auto action) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    for (const auto& keys : KeyBindings::keys(Command::previousPeriod))
        key(keys, [this] { m_bar->goBack(); });
    for (const auto& keys : KeyBindings::keys(Command::nextPeriod))
        key(keys, [this] { m_bar->goForward(); });
    for (const auto& keys : KeyBindings::keys(Command::toggleDetail))
        key(keys, [this] {
            if (m_tabs->chosen() == CapitalModuleTab::contributions)
                m_tabs->contributions().toggleDetail();
        });
}

QList<QWidget*> CapitalView::panes() const
{
    auto all = m_tabs->panes();
    all << m_header;
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
    const auto shown = m_tabs->chosen();
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
    m_bar->open();
    m_header->setTitle(word(workspaceWords(), "dividends"));
    m_tabs->presentTabs();
    m_bar->presentCurrencies();
    present();
    Q_EMIT statusContextChanged();
}

void CapitalView::present()
{
    if (!m_store.snapshot() || m_tabs->isEmpty())
        return;
    m_bar->presentPeriod();
    m_tabs->present(m_bar->question(), m_wanted);
    presentActions();
}

void CapitalView::presentActions()
{
    m_actions->present({.tab = m_tabs->chosen(),
                        .currency = m_bar->question().currency,
                        .contributionID = m_tabs->contributions().chosen(),
                        .choice = m_tabs->choice(),
                        .movementID = m_tabs->dividends().chosenMovement(),
                        .movementEntry = m_tabs->dividends().chosenEntry()});
    presentPrinting();
}

void CapitalView::presentPrinting()
{
    const auto participant =
        m_tabs->chosen() == CapitalModuleTab::dividends ? m_tabs->choice().participantID : std::string{};
    m_printing->present(CapitalPrinting::actions(m_store,
                                                 {.tab = m_tabs->chosen(),
                                                  .question = m_bar->question(),
                                                  .isWhole = m_tabs->isWhole(),
                                                  .participantID = participant},
                                                 *this, [this](const QString& what) { Q_EMIT done(what); }));
}

/// How the participant stands; nobody else's settlement where there is none of theirs. The id is empty for an owner who
/// has no part in dividends.
void CapitalView::showSettlement(const QString& participantID)
{
    const auto snapshot = m_store.snapshot();
    constexpr auto dividends = CapitalModuleTab::dividends;
    if (!snapshot || !m_tabs->has(dividends) || !CapitalSections::isSeen(dividends, *snapshot))
        return; // whether the owner has a part is not for the member to see
    if (participantID.isEmpty())
        return Q_EMIT done(word(capitalWords(), "settlement.noPart"));
    const auto place = CapitalPlaces::settlementOf(participantID.toStdString(), *snapshot, m_bar->question(),
                                                   InterfaceLanguage::tag());
    if (place)
        goTo(*place);
    else
        Q_EMIT done(word(capitalWords(), "settlement.none", {m_bar->question().currency}));
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
        m_tabs->contributions().choose(link.subject);
    else if (link.action == PageAction::showMovement)
        m_tabs->dividends().chooseMovement(link.subject);
}

/// The tab and the currency of a record, and a year that holds it.
void CapitalView::goTo(const CapitalPlace& place)
{
    m_bar->turnTo(place.currency, place.date);
    if (place.tab == CapitalModuleTab::dividends)
        m_wanted = place.choice;
    m_tabs->choose(place.tab);
    present();
}
