#include "LedgerUI/Screens/Reports/ReportPage.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <QAction>
#include <QCoro/QCoroTask>
#include <QEvent>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/EntryTemplates.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SplitButton.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportBrowser.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Screens/Ledger/LedgerActions.h"
#include "LedgerUI/Screens/Templates/TemplateFormDialog.h"
#include "LedgerUI/Screens/Templates/TemplatesDialog.h"

namespace {

/// The entries that an attention row is about.
LedgerFilter entriesOf(const AttentionItem& item, const Period& period)
{
    if (item.kind == AttentionItem::Kind::receiptsMissing)
        return {
            .period = period,
            .kinds = {std::string{EntryKind::income}, std::string{EntryKind::expense}, std::string{EntryKind::refund}},
            .receipts = LedgerFilter::Receipts::missing,
            .standings = {std::string{LedgerStandings::inForce}}};
    if (item.kind == AttentionItem::Kind::entriesReversed)
        return {.period = period, .standings = {std::string{LedgerStandings::ownByOthers}}};
    return {.accountIDs = {item.accountID}, .currencies = {item.currency}};
}

}

ReportPage::ReportPage(LedgerStore& store, ReportPart report, const QString& name, QWidget* parent)
    : PageView{parent}, m_store{store}
{
    setObjectName(name + QStringLiteral("View"));
    m_browser = new ReportBrowser(report, this);
    openBooks(); // a worker lays them out while the page is made
    m_actions = new ActionSet(this);
    presentActions();
    m_header = new PageHeader(this);
    m_period = new PeriodNavigator(m_header);
    buildNewEntry(name);
    connect(&m_store, &LedgerStore::snapshotChanged, this, &ReportPage::adoptSnapshot);
    connect(&m_store, &LedgerStore::isBusyChanged, this, &ReportPage::presentActions);
    connect(&m_store, &LedgerStore::isBusyChanged, this, &ReportPage::loadInvitations, Qt::QueuedConnection);
    connect(&m_store, &LedgerStore::keptChanged, this, &ReportPage::presentSheet);
    connect(&m_store.drafts(), &EntryDrafts::changed, this, &ReportPage::presentActions);
    connect(&m_store.templates(), &EntryTemplates::changed, this, [this] {
        presentActions();
        presentSheet();
    });
    connect(m_browser, &ReportBrowser::changed, this, &ReportPage::presentSheet);
    connect(m_period, &PeriodNavigator::periodChosen, this, [this](const Period& period) {
        auto query = m_browser->query();
        query.period = period;
        query.part.reset();
        m_browser->ask(std::move(query));
    });
}

void ReportPage::buildNewEntry(const QString& name)
{
    m_newEntry = new SplitButton(m_header);
    m_newEntry->setObjectName(name + QStringLiteral("NewEntry"));
    m_newEntry->mainButton().setObjectName(name + QStringLiteral("NewEntryButton"));
    m_newEntry->menuButton().setObjectName(name + QStringLiteral("NewEntryKinds"));
    m_newEntry->setGlyph(QStringLiteral("plus-lg"));
    m_newEntry->setAction((*m_actions)[QStringLiteral("newEntry")]);
    m_newEntry->setMenu([this](QMenu& menu) { m_actions->fill(menu, LedgerActions::recordingMenu()); });
    m_header->setPrimary(m_newEntry);
}

void ReportPage::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        adoptSnapshot();
    PageView::changeEvent(event);
}

void ReportPage::showEvent(QShowEvent* event)
{
    PageView::showEvent(event);
    m_wantsInvitations = m_store.canManage();
    // Whatever is asked for as the page opens goes first.
    QMetaObject::invokeMethod(this, &ReportPage::loadInvitations, Qt::QueuedConnection);
}

void ReportPage::loadInvitations()
{
    if (!m_wantsInvitations || m_store.isBusy() || !m_store.snapshot())
        return;
    m_wantsInvitations = false;
    QCoro::connect(m_store.loadInvitationsQuietly(), this,
                   [this](const Result<std::vector<PendingInvitation>>& loaded) {
                       m_wantsInvitations = !loaded && std::holds_alternative<Cancelled>(loaded.error());
                       if (loaded && m_store.snapshot())
                           adoptInvitations(*loaded);
                   });
}

void ReportPage::adoptInvitations(const std::vector<PendingInvitation>& invitations)
{
    if (invitations == m_invitations)
        return;
    m_invitations = invitations;
    presentSheet();
}

std::vector<AttentionItem> ReportPage::besideBooks() const
{
    const auto& locale = InterfaceLanguage::tag();
    auto items = ReportAttention::unconfirmed(m_store.keptRequests(), locale);
    std::ranges::move(ReportAttention::due(m_store.templates().proposals(), locale), std::back_inserter(items));
    std::ranges::move(ReportAttention::expiring(m_invitations, m_store.today(), locale), std::back_inserter(items));
    return items;
}

void ReportPage::adoptSnapshot()
{
    presentActions();
    m_newEntry->setMenuName(word(ledgerWords(), "newEntry.kinds"));
    const bool isAsked = openBooks();
    if (!isAsked || !m_browser->sheet())
        presentSheet();
}

bool ReportPage::openBooks()
{
    const auto today = LedgerDay::parse(m_store.today());
    return m_browser->open(m_store.snapshot(), InterfaceLanguage::tag(),
                           today.value_or(std::chrono::year{1970} / std::chrono::January / 1));
}

void ReportPage::presentSheet()
{
    const auto sheet = m_browser->sheet();
    if (sheet)
        m_period->present(m_browser->query().period, sheet->books->counts, m_browser->query().today);
    present(sheet.get());
}

void ReportPage::presentActions()
{
    m_actions->present(LedgerActions::recording(
        m_store, [this](const EntryForm::Opening& opening) { openForm(opening); }, [this] { showTemplates(); }));
    m_actions->present({keyedAction("previousPeriod", Command::previousPeriod, [this] { m_period->goBack(); }),
                        keyedAction("nextPeriod", Command::nextPeriod, [this] { m_period->goForward(); }),
                        keyedAction("openPeriod", Command::openPeriod, [this] { m_period->openPopover(); })});
    if (m_newEntry)
        m_newEntry->setVisible((*m_actions)[QStringLiteral("newEntry")]->isVisible());
}

ChartColors ReportPage::colorsOf(const ReportSheet& sheet)
{
    const auto& snapshot = *sheet.books->snapshot;
    return {.income = entryKindColor(EntryKind::income, snapshot),
            .expense = entryKindColor(EntryKind::expense, snapshot)};
}

void ReportPage::showInLedger(LedgerFilter filter)
{
    Q_EMIT linkPressed(
        {.page = WorkspacePage::ledger, .action = PageAction::showEntries, .entries = std::move(filter)});
}

void ReportPage::showBacking(const ReportBacking& backing)
{
    showInLedger({.period = backing.period, .figure = backing.figure});
}

void ReportPage::showEntry(const QString& id)
{
    Q_EMIT linkPressed({.page = WorkspacePage::ledger, .action = PageAction::showEntry, .subject = id.toStdString()});
}

void ReportPage::sayCopied()
{
    Q_EMIT done(word(reportWords(), "copied"));
}

void ReportPage::lend(const AttentionItem& item)
{
    switch (item.kind) {
    case AttentionItem::Kind::entryDue:
        if (const auto* kept = m_store.templates().find(item.occurrence.templateID))
            openForm(TemplatesDialog::openingOf(*kept, item.occurrence.day));
        return;
    case AttentionItem::Kind::entriesDue:
        showTemplates();
        return;
    case AttentionItem::Kind::entryUnconfirmed:
        if (const auto kept = m_store.keptEntry())
            openForm(new TransactionForm(m_store, *kept, window()));
        return;
    case AttentionItem::Kind::requestsUnconfirmed:
        Q_EMIT unconfirmedWanted();
        return;
    case AttentionItem::Kind::invitationsExpiring:
        Q_EMIT linkPressed({.page = WorkspacePage::company, .action = PageAction::showInvitations});
        return;
    case AttentionItem::Kind::receiptsMissing:
    case AttentionItem::Kind::floatBelowZero:
    case AttentionItem::Kind::entriesReversed:
        showInLedger(entriesOf(item, m_browser->query().period));
        return;
    case AttentionItem::Kind::floatEmpty:
    case AttentionItem::Kind::floatLow: {
        if (!item.canFund)
            return showInLedger(entriesOf(item, m_browser->query().period));
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
        Q_EMIT linkPressed(
            {.page = WorkspacePage::dividends, .action = PageAction::showUnpaid, .subject = item.currency});
        return;
    case AttentionItem::Kind::advancesUnapplied:
        Q_EMIT linkPressed(
            {.page = WorkspacePage::dividends, .action = PageAction::showAdvances, .subject = item.currency});
        return;
    }
}

void ReportPage::openForm(const EntryForm::Opening& opening)
{
    openForm(new TransactionForm(m_store, opening, window()));
}

void ReportPage::showTemplates()
{
    (new TemplatesDialog(m_store, [this](const EntryForm::Opening& opening) { openForm(opening); }, window()))->open();
}

void ReportPage::openForm(TransactionForm* form)
{
    TemplateFormDialog::offerIn(*form, m_store);
    connect(form, &TransactionForm::recorded, this, [this] { Q_EMIT done(word(ledgerWords(), "done.recorded")); });
    form->offerBegun();
    connect(form, &TransactionForm::continueWanted, this,
            [this](const EntryForm::Opening& opening) { openForm(opening); });
    form->open();
}
