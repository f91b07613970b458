#include "LedgerUI/Screens/Reports/ReportsView.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SplitButton.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Page/PageTabs.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Table/ChoiceField.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Ledger/LedgerFilter.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Reports/ReportBrowser.h"
#include "LedgerUI/Presentation/Reports/ReportWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Screens/Ledger/LedgerActions.h"
#include "LedgerUI/Screens/Reports/OverviewTab.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int accountsWidth = 230;

QString text(std::string_view key)
{
    return word(reportWords(), key);
}

/// The entries that an attention row is about.
LedgerFilter entriesOf(const AttentionItem& item, const Period& period)
{
    if (item.kind == AttentionItem::Kind::receiptsMissing)
        return {
            .period = period,
            .kinds = {std::string{EntryKind::income}, std::string{EntryKind::expense}, std::string{EntryKind::refund}},
            .receipts = LedgerFilter::Receipts::missing};
    return {.accountIDs = {item.accountID}, .currencies = {item.currency}};
}

}

ReportsView::ReportsView(LedgerStore& store, QWidget* parent) : PageView{parent}, m_store{store}
{
    setObjectName(QStringLiteral("reportsView"));
    m_browser = new ReportBrowser(this);
    m_actions = new ActionSet(this);
    presentActions();
    buildLayout();
    bindParts();
    adoptSnapshot();
}

void ReportsView::buildLayout()
{
    m_header = new PageHeader(this);
    auto* middle = new QWidget(m_header);
    m_period = new PeriodNavigator(middle);
    m_accounts = new ChoiceField(middle);
    m_accounts->setObjectName(QStringLiteral("reportAccounts"));
    m_accounts->setMaximumWidth(accountsWidth);
    auto* row = new QHBoxLayout(middle);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step2);
    row->addWidget(m_period);
    row->addWidget(m_accounts);
    m_header->setMiddle(middle);
    buildNewEntry();

    m_tabs = new PageTabs(QStringLiteral("reportTabs"), this);
    addTab(QStringLiteral("overview"), new OverviewTab(m_tabs));
    m_notice = new EmptyState(QStringLiteral("bar-chart"), this);
    m_notice->setObjectName(QStringLiteral("reportNotice"));
    m_stack = new QStackedWidget(this);
    m_stack->addWidget(m_notice);
    m_stack->addWidget(m_tabs);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_header);
    rows->addWidget(m_stack, 1);
}

void ReportsView::buildNewEntry()
{
    m_newEntry = new SplitButton(this);
    m_newEntry->setObjectName(QStringLiteral("reportNewEntry"));
    m_newEntry->mainButton().setObjectName(QStringLiteral("reportNewEntryButton"));
    m_newEntry->menuButton().setObjectName(QStringLiteral("reportNewEntryKinds"));
    m_newEntry->setGlyph(QStringLiteral("plus-lg"));
    m_newEntry->setAction((*m_actions)[QStringLiteral("newEntry")]);
    auto* kinds = new QMenu(this);
    m_actions->fill(*kinds, LedgerActions::recordingMenu());
    m_newEntry->setMenu(kinds);
    m_header->setPrimary(m_newEntry);
}

void ReportsView::addTab(const QString& id, ReportTab* tab)
{
    m_order.push_back(id);
    m_made[id] = tab;
    m_tabs->setContents(id, tab);
    connect(tab, &ReportTab::queryWanted, m_browser, qOverload<ReportQuery>(&ReportBrowser::ask));
    connect(tab, &ReportTab::backingWanted, this, [this](const ReportBacking& backing) {
        showInLedger({.period = backing.period, .figure = backing.figure});
    });
    connect(tab, &ReportTab::attentionWanted, this, &ReportsView::lend);
    connect(tab, &ReportTab::tabWanted, m_tabs, &PageTabs::choose);
    connect(tab, &ReportTab::copied, this, [this] { Q_EMIT done(text("copied")); });
}

void ReportsView::bindParts()
{
    connect(&m_store, &LedgerStore::snapshotChanged, this, &ReportsView::adoptSnapshot);
    connect(&m_store, &LedgerStore::isBusyChanged, this, &ReportsView::presentActions);
    connect(m_browser, &ReportBrowser::changed, this, &ReportsView::present);
    connect(m_tabs, &PageTabs::chosenChanged, this, &ReportsView::presentTab);
    connect(m_period, &PeriodNavigator::periodChosen, this, [this](const Period& period) {
        auto query = m_browser->query();
        query.period = period;
        m_browser->ask(std::move(query));
    });
    connect(m_accounts, &ChoiceField::chosenChanged, this, [this] {
        const auto& chosen = m_accounts->chosen();
        auto query = m_browser->query();
        query.accountIDs.reset();
        if (!chosen.empty())
            query.accountIDs = chosen;
        m_browser->ask(std::move(query));
    });
}

QList<QWidget*> ReportsView::panes() const
{
    if (m_stack->currentWidget() != m_tabs)
        return {m_header};
    auto all = m_made.at(m_tabs->chosen())->panes();
    all.append(m_header);
    all.append(&m_tabs->row());
    return all;
}

void ReportsView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        adoptSnapshot();
    PageView::changeEvent(event);
}

void ReportsView::adoptSnapshot()
{
    const auto today = LedgerDay::parse(m_store.today());
    presentActions();
    m_browser->open(m_store.snapshot(), InterfaceLanguage::tag(),
                    today.value_or(std::chrono::year{1970} / std::chrono::January / 1));
    if (!m_browser->sheet())
        m_notice->setTexts(text("preparing"), {});
}

void ReportsView::present()
{
    const auto& sheet = m_browser->sheet();
    m_header->setTitle(text("title"));
    m_newEntry->setMenuName(word(ledgerWords(), "newEntry.kinds"));
    if (!sheet)
        return;
    m_period->present(m_browser->query().period, sheet->books->counts, m_browser->query().today);
    presentAccounts();
    std::vector<PageTabs::Tab> tabs;
    for (const auto& id : m_order)
        tabs.push_back({.id = id, .text = text("tab." + id.toStdString())});
    m_tabs->setName(text("tabs"));
    m_tabs->present(tabs);
    if (sheet->failure)
        presentFailure();
    else
        presentTab();
}

/// Only the tab in sight follows; the others do when they come into it.
void ReportsView::presentTab()
{
    const auto& sheet = m_browser->sheet();
    const auto found = m_made.find(m_tabs->chosen());
    if (!sheet || sheet->failure || found == m_made.end())
        return;
    found->second->present(*sheet, colors());
    m_stack->setCurrentWidget(m_tabs);
}

void ReportsView::presentFailure()
{
    const bool isTooLarge = m_browser->sheet()->failure == ReportError::amountOverflow;
    m_notice->setTexts(text("failed"), text(isTooLarge ? "failed.amountOverflow" : "failed.invalidDay"));
    m_stack->setCurrentWidget(m_notice);
}

void ReportsView::presentAccounts()
{
    const auto& sheet = *m_browser->sheet();
    const auto& chosen = m_browser->query().accountIDs;
    std::vector<ChoiceList::Choice> choices;
    QString only;
    for (const auto& account : sheet.books->snapshot->accounts) {
        choices.push_back({.id = account.id, .text = QString::fromStdString(account.name)});
        if (chosen && chosen->contains(account.id))
            only = choices.back().text;
    }
    const auto summary = !chosen ? text("accounts.all")
                         : chosen->size() == 1U
                             ? only
                             : countedIn(InterfaceLanguage::tag(), reportWords(), "accounts", chosen->size());
    m_accounts->present({.name = text("accounts"),
                         .all = text("accounts.all"),
                         .search = text("accounts.search"),
                         .noMatch = text("accounts.noMatch")},
                        choices, chosen.value_or(ChoiceList::Chosen{}), summary);
}

void ReportsView::presentActions()
{
    m_actions->present(LedgerActions::recording(
        m_store, [this](const std::string& kind) { openForm({.kind = kind, .accountID = {}, .prefilled = {}}); }));
    const auto keyed = [](const char* id, Command command, std::function<void()> run) {
        return Action{
            .id = QString::fromLatin1(id), .text = {}, .keys = KeyBindings::keys(command), .run = std::move(run)};
    };
    m_actions->present({keyed("previousPeriod", Command::previousPeriod, [this] { m_period->goBack(); }),
                        keyed("nextPeriod", Command::nextPeriod, [this] { m_period->goForward(); }),
                        keyed("openPeriod", Command::openPeriod, [this] { m_period->openPopover(); })});
    if (m_newEntry)
        m_newEntry->setVisible((*m_actions)[QStringLiteral("newEntry")]->isVisible());
}

ChartColors ReportsView::colors() const
{
    const auto& snapshot = *m_browser->sheet()->books->snapshot;
    return {.income = entryKindColor(EntryKind::income, snapshot),
            .expense = entryKindColor(EntryKind::expense, snapshot)};
}

void ReportsView::lend(const AttentionItem& item)
{
    switch (item.kind) {
    case AttentionItem::Kind::receiptsMissing:
    case AttentionItem::Kind::floatBelowZero:
        showInLedger(entriesOf(item, m_browser->query().period));
        return;
    case AttentionItem::Kind::floatEmpty: {
        TransactionDraft draft;
        draft.kind = EntryKind::transfer;
        draft.target = item.accountID;
        draft.currency = item.currency;
        openForm({.kind = draft.kind, .accountID = {}, .prefilled = std::move(draft)});
        return;
    }
    case AttentionItem::Kind::openingsMissing:
        openForm({.kind = std::string{EntryKind::opening}, .accountID = item.accountID, .prefilled = {}});
        return;
    case AttentionItem::Kind::startUnconfirmed:
        Q_EMIT linkPressed({.page = WorkspacePage::company, .action = PageAction::setStartDate});
        return;
    case AttentionItem::Kind::dividendsUnpaid:
    case AttentionItem::Kind::advancesUnapplied:
        Q_EMIT linkPressed({.page = WorkspacePage::dividends});
        return;
    }
}

void ReportsView::showInLedger(LedgerFilter filter)
{
    Q_EMIT linkPressed(
        {.page = WorkspacePage::ledger, .action = PageAction::showEntries, .entries = std::move(filter)});
}

void ReportsView::openForm(const EntryForm::Opening& opening)
{
    auto* form = new TransactionForm(m_store, opening, window());
    connect(form, &TransactionForm::recorded, this, [this] { Q_EMIT done(word(ledgerWords(), "done.recorded")); });
    form->open();
}
