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
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Page/PageTabs.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Capital/CapitalActions.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Capital/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Capital/CapitalWords.h"
#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Presentation/Ledger/RecordLinks.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Presentation/Workspace/WorkspaceWords.h"
#include "LedgerUI/Screens/Capital/CapitalActionForm.h"
#include "LedgerUI/Screens/Capital/CapitalOverviewTab.h"
#include "LedgerUI/Screens/Capital/ContributionsTab.h"
#include "LedgerUI/Screens/Capital/DividendActionForm.h"
#include "LedgerUI/Screens/Capital/DividendsTab.h"
#include "LedgerUI/Screens/Capital/RecordHead.h"
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

/// The name of a tab in the row of tabs.
QString idOf(CapitalModuleTab tab)
{
    return QString::fromLatin1(wordOf(tab).data());
}

/// The entry that booked the money of a movement; empty for one that moved none.
std::string entryOf(const LedgerSnapshot& snapshot, std::string_view movementID)
{
    if (!snapshot.dividends)
        return {};
    const auto& all = snapshot.dividends->movements;
    const auto found = std::ranges::find(all, movementID, &DividendMovement::id);
    return found == all.end() ? std::string{} : found->transactionID.value_or("");
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
    m_actions = new ActionSet(this);
    for (const auto* id :
         {"contribute", "owners", "ownership", "history", "supersede", "reverseContribution", "allocate", "payAdvance",
          "participants", "cancelBatch", "pay", "applyAdvance", "returnAdvance", "reverseMovement", "openMovement"})
        m_actions->present({act(id, {}, false, {})});
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

    m_overview = new CapitalOverviewTab;
    m_contributions = new ContributionsTab;
    m_dividends = new DividendsTab;
    m_tabRow = new PageTabs(QStringLiteral("capitalTabs"), this);
    addPlace(CapitalModuleTab::overview, m_overview);
    addPlace(CapitalModuleTab::contributions, m_contributions);
    addPlace(CapitalModuleTab::dividends, m_dividends);
    placeActions();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_header);
    rows->addWidget(m_tabRow, 1);
}

void CapitalView::addPlace(CapitalModuleTab tab, QWidget* contents)
{
    auto* place = new QStackedWidget;
    place->setMinimumSize(1, 1); // texts of tabs that were never shown would want more height than the window has
    auto* unavailable = new EmptyState(QStringLiteral("exclamation-triangle"), place);
    unavailable->setObjectName(QStringLiteral("capitalUnavailable"));
    place->addWidget(contents);
    place->addWidget(unavailable);
    m_places[tab] = place;
    m_tabRow->setContents(idOf(tab), place);
}

/// Each action has its button where it is needed.
void CapitalView::placeActions()
{
    const auto action = [this](const char* id) { return (*m_actions)[QString::fromLatin1(id)]; };
    for (const auto* id : {"payAdvance", "participants"})
        m_header->addSecondary(action(id));
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
    connect(m_currency, &SegmentedControl::chosenByUser, this, [this](int at) {
        m_question.currency = m_currencies[static_cast<std::size_t>(at)];
        m_choice = {};
        present();
    });
    connect(m_tabRow, &PageTabs::chosenChanged, this, [this] {
        present();
        Q_EMIT statusContextChanged();
    });
    connect(&m_store, &LedgerStore::isBusyChanged, this, &CapitalView::presentActions);
    const auto entryWanted = [this](const QString& id) { showEntry(id.toStdString()); };
    connect(m_overview, &CapitalOverviewTab::entryWanted, this, entryWanted);
    connect(m_contributions, &ContributionsTab::entryWanted, this, entryWanted);
    connect(m_contributions, &ContributionsTab::chosenChanged, this, &CapitalView::presentContribution);
    connect(m_dividends, &DividendsTab::movementChosen, this, &CapitalView::presentActions);
    connect(m_dividends, &DividendsTab::movementOpened, (*m_actions)[QStringLiteral("openMovement")],
            &QAction::trigger);
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
    presentTabs();
    presentCurrencies();
    present();
    Q_EMIT statusContextChanged();
}

void CapitalView::presentTabs()
{
    m_tabs = FinancialFeaturePolicy::activeTabs(*m_store.snapshot());
    std::vector<PageTabs::Tab> shown;
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
    presentActions();
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
    const auto shown = DividendBoards::board(*snapshot, m_question, m_choice, InterfaceLanguage::tag());
    if (!shown)
        return showUnavailable(refusalText(DividendRefusal::integrity, InterfaceLanguage::tag()));
    m_choice = shown->choice;
    m_dividends->present(*shown, RecordInks{*snapshot});
    showContents();
}

/// Never a part of the figures where the whole does not verify.
void CapitalView::showUnavailable(const QString& why)
{
    auto* place = m_places.at(tab());
    static_cast<EmptyState*>(place->widget(1))->setTexts(text("unavailable"), why);
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

Action CapitalView::act(const char* id, const QString& whyNot, bool isOffered, std::function<void()> run) const
{
    return {.id = QString::fromLatin1(id),
            .text = text(std::string{"action."} + id),
            .whyNot = m_store.isBusy() ? text("busy") : whyNot,
            .isOffered = isOffered,
            .run = std::move(run)};
}

void CapitalView::presentActions()
{
    if (!m_store.snapshot())
        return;
    m_actions->present(capitalActions());
    m_actions->present(dividendActions());
    m_actions->present(chosenActions());
}

std::vector<Action> CapitalView::capitalActions()
{
    namespace Wanted = CapitalAction;
    const auto snapshot = m_store.snapshot();
    const auto shown = tab();
    const bool hasCapital = MemberRights::canOpenContributions(snapshot->currentMember);
    const auto offer = [&](const char* id, std::string_view action, bool isOffered) {
        return act(
            id, CapitalActions::whyNot(action, *snapshot, InterfaceLanguage::tag()), hasCapital && isOffered,
            [this, action] { change(CapitalRoute{.action = std::string{action}, .currency = m_question.currency}); });
    };
    const bool isOverview = shown == CapitalModuleTab::overview;
    const auto contribution = m_contributions->chosen();
    const auto detail = ContributionLists::detail(*snapshot, contribution, m_store.today(), InterfaceLanguage::tag());
    return {offer("contribute", Wanted::contribute, shown != CapitalModuleTab::dividends),
            offer("owners", Wanted::setParticipant, isOverview),
            offer("ownership", Wanted::setOwnership, isOverview),
            offer("history", Wanted::setBaseline, true),
            offer("supersede", Wanted::setBaseline, true),
            act("reverseContribution", detail ? detail->whyNotReverse : QString{}, detail.has_value(),
                [this, contribution] {
                    change(CapitalRoute{.action = std::string{Wanted::reverse}, .contributionID = contribution});
                })};
}

std::vector<Action> CapitalView::dividendActions()
{
    namespace Wanted = DividendAction;
    const auto snapshot = m_store.snapshot();
    const bool isOffered =
        tab() == CapitalModuleTab::dividends && MemberRights::canOpenDividends(snapshot->currentMember);
    const auto offer = [&](const char* id, std::string_view action) {
        return act(id, DividendActions::whyNot(action, *snapshot, InterfaceLanguage::tag()), isOffered, [this, action] {
            change(DividendRoute{.action = std::string{action}, .currency = m_question.currency});
        });
    };
    auto advance = offer("payAdvance", Wanted::advance);
    advance.glyph = QStringLiteral("cash-coin");
    auto participants = offer("participants", Wanted::setParticipant);
    participants.glyph = QStringLiteral("people");
    return {offer("allocate", Wanted::allocate), std::move(advance), std::move(participants)};
}

/// What can be done with the chosen allocation, participant, advance and movement.
std::vector<Action> CapitalView::chosenActions()
{
    namespace Wanted = DividendAction;
    const auto snapshot = m_store.snapshot();
    const bool isAdvances = m_choice.batchID == DividendBoards::advances;
    const bool hasBatch = !isAdvances && !m_choice.batchID.empty();
    const DividendActions::Target line{.batchID = m_choice.batchID, .participantID = m_choice.participantID};
    const DividendActions::Target advance{.advanceID = m_choice.advanceID};
    const DividendActions::Target movement{.movementID = m_dividends->chosenMovement()};
    const auto offer = [&](const char* id, std::string_view action, const DividendActions::Target& target,
                           bool isOffered) {
        return act(id,
                   isOffered
                       ? DividendActions::whyNot(action, target, *snapshot, m_store.today(), InterfaceLanguage::tag())
                       : QString{},
                   isOffered, [this, action, target] {
                       change(DividendRoute{.action = std::string{action},
                                            .participantID = target.participantID,
                                            .batchID = target.batchID,
                                            .advanceID = target.advanceID,
                                            .movementID = target.movementID,
                                            .currency = m_question.currency});
                   });
    };
    const auto entry = entryOf(*snapshot, movement.movementID);
    return {offer("cancelBatch", Wanted::cancelBatch, {.batchID = m_choice.batchID}, hasBatch),
            offer("pay", Wanted::pay, line, hasBatch),
            offer("applyAdvance", Wanted::apply, line, hasBatch),
            offer("returnAdvance", Wanted::returnAdvance, advance, isAdvances && !m_choice.advanceID.empty()),
            offer("reverseMovement", Wanted::reverse, movement, !movement.movementID.empty()),
            act("openMovement", entry.empty() ? text("remark.noCash") : QString{}, !movement.movementID.empty(),
                [this, entry] { showEntry(entry); })};
}

void CapitalView::change(const CapitalRoute& route)
{
    auto* form = new CapitalActionForm(m_store, route, window());
    form->whenDone([this] { Q_EMIT done(text("done")); });
    form->open();
}

void CapitalView::change(const DividendRoute& route)
{
    auto* form = new DividendActionForm(m_store, route, window());
    form->whenDone([this] { Q_EMIT done(text("done")); });
    form->open();
}

void CapitalView::showEntry(const std::string& id)
{
    if (!id.empty())
        Q_EMIT linkPressed({.page = WorkspacePage::ledger, .action = PageAction::showEntry, .subject = id});
}

void CapitalView::follow(const PageLink& link)
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    if (link.action == PageAction::showContribution && snapshot->capital) {
        const auto& all = snapshot->capital->contributions;
        const auto found = std::ranges::find(all, link.subject, &CapitalContribution::id);
        if (found == all.end())
            return;
        lookAt(found->currency, found->date);
        m_tabRow->choose(idOf(CapitalModuleTab::contributions));
        present();
        m_contributions->choose(link.subject);
    } else if (link.action == PageAction::showMovement && snapshot->dividends) {
        const auto& all = snapshot->dividends->movements;
        const auto found = std::ranges::find(all, link.subject, &DividendMovement::id);
        if (found == all.end())
            return;
        lookAt(found->currency, found->date);
        const auto advanceID = found->kind == DividendMovementKind::advance ? found->id : found->advanceID.value_or("");
        m_choice = {.batchID = found->batchID.value_or(std::string{DividendBoards::advances}),
                    .participantID = found->participantID,
                    .advanceID = advanceID};
        m_tabRow->choose(idOf(CapitalModuleTab::dividends));
        present();
        m_dividends->chooseMovement(link.subject);
    }
}

/// The currency of a record, and a year that holds it.
void CapitalView::lookAt(const std::string& currency, const std::string& date)
{
    m_question.currency = currency;
    if (const auto day = LedgerDay::parse(date); day && !m_question.period.contains(date))
        m_question.period = Period::containing(Period::Span::year, *day);
    presentCurrencies();
}
