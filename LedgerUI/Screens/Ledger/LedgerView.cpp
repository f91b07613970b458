#include "LedgerUI/Screens/Ledger/LedgerView.h"

#include <chrono>
#include <utility>

#include <QAction>
#include <QEvent>
#include <QTimer>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/EntryTemplates.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SplitButton.h"
#include "LedgerUI/Components/Page/ListDetailPage.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Ledger/Detail/LedgerDetailPane.h"
#include "LedgerUI/Screens/Ledger/Filters/LedgerFilterRow.h"
#include "LedgerUI/Screens/Ledger/LedgerCommands.h"
#include "LedgerUI/Screens/Ledger/LedgerDialogs.h"
#include "LedgerUI/Screens/Ledger/LedgerGuide.h"
#include "LedgerUI/Screens/Ledger/LedgerMessages.h"
#include "LedgerUI/Screens/Ledger/LedgerNoticeView.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"
#include "LedgerUI/Screens/Ledger/LedgerTotalsStrip.h"

namespace {

QString text(std::string_view key)
{
    return word(ledgerWords(), key);
}

}

LedgerView::LedgerView(LedgerStore& store, QWidget* parent) : PageView{parent}, m_store{store}
{
    setObjectName(QStringLiteral("ledgerView"));
    m_browser = new LedgerBrowser(this);
    openBook(); // a worker lays it out while the page is made
    m_commands = new LedgerCommands(store, *m_browser, *this);
    m_commands->present(m_selection);
    buildHeader();
    buildLayout();
    bindParts();
    bindDetail();
    bindDialogs();
    m_filters->setDetailShown(m_page->isDetailShown());
    retranslate();
    presentDue();
    presentBook(); // its commands stand as they were made
}

void LedgerView::buildHeader()
{
    m_page = new ListDetailPage(this);
    m_header = new PageHeader(m_page);
    m_period = new PeriodNavigator(m_header);
    m_newEntry = new SplitButton(m_header);
    m_newEntry->setObjectName(QStringLiteral("newEntry"));
    m_newEntry->mainButton().setObjectName(QStringLiteral("newEntryButton"));
    m_newEntry->menuButton().setObjectName(QStringLiteral("newEntryKinds"));
    m_newEntry->setGlyph(QStringLiteral("plus-lg"));
    m_newEntry->setAction((*m_commands)[QStringLiteral("newEntry")]);
    m_newEntry->setMenu([this](QMenu& menu) { m_commands->fillRecordingMenu(menu); });
    m_header->setMiddle(m_period);
    m_header->addSecondary((*m_commands)[QStringLiteral("importLedger")]);
    m_header->addSecondary((*m_commands)[QStringLiteral("exportLedger")]);
    m_header->addSecondary((*m_commands)[QStringLiteral("printLedger")]);
    m_header->setPrimary(m_newEntry);
    showNewEntry();
}

void LedgerView::buildLayout()
{
    m_filters = new LedgerFilterRow(m_page);
    m_messages = new LedgerMessages(m_page);
    m_table = new LedgerTable(m_page->listPlace());
    m_notice = new LedgerNoticeView(m_page->listPlace());
    m_totals = new LedgerTotalsStrip(m_page->stripPlace());
    m_guide = new LedgerGuide(*m_browser, *m_table, *m_messages, this);
    m_detail = new LedgerDetailPane(m_page->detailPlace());
    m_page->arrange({.header = m_header,
                     .filters = m_filters,
                     .message = m_messages,
                     .table = m_table,
                     .notice = m_notice,
                     .strip = m_totals,
                     .detail = m_detail,
                     .detailStop = m_detail->firstStop()});
    m_commands->act({.period = m_period, .filters = m_filters, .table = m_table, .page = m_page, .guide = m_guide});
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_page);
}

void LedgerView::bindParts()
{
    // In a turn of its own, while a large book is being laid out.
    connect(this, &PageView::firstSeen, m_totals,
            [this] { QTimer::singleShot(std::chrono::milliseconds{1}, m_totals, &LedgerTotalsStrip::makeReady); });
    const auto entryWanted = [this](const QString& id) { showEntry(id.toStdString()); };
    connect(&m_store, &LedgerStore::snapshotChanged, this, &LedgerView::adoptSnapshot);
    connect(&m_store, &LedgerStore::isBusyChanged, this, [this] {
        presentCommands();
        presentDetail();
    });
    connect(&m_store.drafts(), &EntryDrafts::changed, this, &LedgerView::presentCommands);
    connect(&m_store.templates(), &EntryTemplates::changed, this, [this] {
        presentCommands();
        presentDue();
    });
    connect(m_messages, &LedgerMessages::dueWanted, &m_commands->dialogs(), &LedgerDialogs::showTemplates);
    connect(m_browser, &LedgerBrowser::changed, this, &LedgerView::present);
    connect(m_period, &PeriodNavigator::periodChosen, this, [this](const Period& period) {
        auto filter = m_browser->filter();
        filter.period = period;
        m_browser->setFilter(filter);
    });
    connect(m_page, &ListDetailPage::arranged, this, [this] {
        m_filters->setNarrow(m_page->isNarrow());
        m_filters->setDetailShown(m_page->isDetailShown());
    });
    connect(m_filters, &LedgerFilterRow::filterWanted, m_browser, &LedgerBrowser::setFilter);
    connect(m_filters, &LedgerFilterRow::clearWanted, (*m_commands)[QStringLiteral("clearFilters")], &QAction::trigger);
    connect(m_filters, &LedgerFilterRow::byDayToggled, (*m_commands)[QStringLiteral("groupByDay")], &QAction::trigger);
    connect(m_filters, &LedgerFilterRow::detailToggled, m_page, &ListDetailPage::toggleDetail);
    connect(m_filters, &LedgerFilterRow::leftDownwards, m_table, &RowTable::enter);
    connect(m_filters, &LedgerFilterRow::leftByEscape, m_page, &ListDetailPage::leaveDetail);
    connect(m_messages, &LedgerMessages::entryWanted, this, entryWanted);
    connect(m_messages, &LedgerMessages::left, m_page, &ListDetailPage::focusContent);
    connect(m_notice, &LedgerNoticeView::filterWanted, m_browser, &LedgerBrowser::setFilter);
    connect(m_notice, &LedgerNoticeView::recordWanted, (*m_commands)[QStringLiteral("newEntry")], &QAction::trigger);
    connect(m_notice, &LedgerNoticeView::openingWanted, this, [this] {
        m_commands->record({.kind = std::string{EntryKind::opening}, .accountID = {}, .prefilled = {}});
    });
    connect(m_notice, &LedgerNoticeView::setUpWanted, this,
            [this] { Q_EMIT linkPressed({.page = WorkspacePage::accounts}); });
    connect(m_table, &RowTable::selectionMoved, this, &LedgerView::presentSelection);
    connect(m_table, &RowTable::opened, m_page, &ListDetailPage::openDetail);
    connect(m_table, &RowTable::menuWanted, m_commands, &LedgerCommands::openEntryMenu);
    connect(m_table, &LedgerTable::sortWanted, m_browser, &LedgerBrowser::setSort);
    connect(m_table, &LedgerTable::columnsWanted, m_commands, &LedgerCommands::openColumnsMenu);
}

void LedgerView::bindDetail()
{
    auto& dialogs = m_commands->dialogs();
    connect(m_detail, &LedgerDetailPane::closeWanted, m_page, &ListDetailPage::closeDetail);
    connect(m_detail, &LedgerDetailPane::left, m_page, &ListDetailPage::leaveDetail);
    m_detail->offer(m_commands->onChosen());
    connect(m_detail, &LedgerDetailPane::entryWanted, this, [this](const QString& id) { showEntry(id.toStdString()); });
    connect(m_detail, &LedgerDetailPane::receiptWanted, &dialogs,
            [&dialogs](const QString& id, std::size_t at) { dialogs.showReceipt(id.toStdString(), at); });
    connect(m_detail, &LedgerDetailPane::receiptsOffered, &dialogs,
            [&dialogs](const QString& id, const std::vector<ReceiptSource>& sources) {
                dialogs.addReceipts({.entryID = id.toStdString(), .sources = sources});
            });
    connect(m_detail, &LedgerDetailPane::recordWanted, this, &LedgerView::linkPressed);
    connect(m_detail, &LedgerDetailPane::accountWanted, this,
            [this](const QString& id) { m_commands->showOnlyAccount(id.toStdString()); });
}

void LedgerView::bindDialogs()
{
    auto& dialogs = m_commands->dialogs();
    // What an ended session left comes back over a page that is seen, in the window that it stands in by then.
    connect(this, &PageView::firstSeen, &dialogs, &LedgerDialogs::offerKeptEntry, Qt::QueuedConnection);
    connect(&m_store.drafts(), &EntryDrafts::arrived, this, [this, &dialogs] {
        if (hasBeenSeen())
            dialogs.offerKeptEntry();
    });
    const auto goTo = [this](const QString& id) {
        m_guide->goTo({id.toStdString()}, LedgerGuide::Shows::whereItStands);
    };
    connect(&dialogs, &LedgerDialogs::recorded, this, goTo);
    connect(&dialogs, &LedgerDialogs::reversed, this, goTo);
    connect(&dialogs, &LedgerDialogs::imported, this,
            [this](const std::vector<std::string>& ids) { m_guide->goTo(ids, LedgerGuide::Shows::always); });
    connect(&dialogs, &LedgerDialogs::done, this, &LedgerView::done);
    connect(m_commands, &LedgerCommands::done, this, &LedgerView::done);
}

QList<QWidget*> LedgerView::panes() const
{
    return m_page->panes();
}

PageView::StatusContext LedgerView::statusContext() const
{
    if (m_selection.entries.empty())
        return {};
    // The status bar must never keep the window from shrinking: the pane has every sum.
    const auto& locale = InterfaceLanguage::tag();
    return {m_selection.count(locale), m_selection.figures(locale, m_page->isNarrow() ? 2 : 4)};
}

void LedgerView::follow(const PageLink& link)
{
    if (link.action == PageAction::newEntry) {
        (*m_commands)[QStringLiteral("newEntry")]->trigger();
    } else if (link.action == PageAction::showEntries && link.entries) {
        m_browser->setFilter(*link.entries);
        m_page->focusContent();
    } else if (link.action == PageAction::showEntry) {
        showEntry(link.subject);
    } else if (link.action == PageAction::chooseEntries) {
        m_guide->goTo(link.subjects, LedgerGuide::Shows::always);
    } else if (link.action == PageAction::showAccount) {
        // All that is on the account, whatever was looked for here before.
        LedgerFilter filter{.period = Period::allTime()};
        filter.accountIDs = {link.subject};
        m_browser->setFilter(std::move(filter));
        m_page->focusContent();
    }
}

void LedgerView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        adoptSnapshot();
    }
    PageView::changeEvent(event);
}

void LedgerView::adoptSnapshot()
{
    presentDue();
    if (!openBook())
        presentBook();
    presentCommands(); // which also say what the books allow before they are laid out
}

bool LedgerView::openBook()
{
    const auto today = LedgerDay::parse(m_store.today());
    return m_browser->open(m_store.snapshot(), InterfaceLanguage::tag(),
                           today.value_or(std::chrono::year{1970} / std::chrono::January / 1));
}

void LedgerView::present()
{
    presentBook();
    presentCommands();
}

void LedgerView::presentBook()
{
    if (!m_browser->book())
        m_selection = {}; // signed out: what was chosen is no place in any book
    m_period->present(m_browser->filter().period, m_browser->counts(), m_browser->today());
    m_filters->present(*m_browser);
    if (const auto& listing = m_browser->listing()) {
        const auto& book = *listing->book;
        m_table->present(*m_browser);
        if (const auto& notice = listing->notice)
            m_notice->present(*notice);
        presentTotals();
        m_commands->presentColumns();
        m_page->setHasContents(book.size() > 0);
        m_page->show(listing->notice ? ListDetailPage::Content::notice : ListDetailPage::Content::table);
    } else if (m_browser->isPreparing()) {
        m_notice->presentWaiting(text("preparing"));
        m_page->show(ListDetailPage::Content::notice);
    }
    m_messages->present(*m_browser);
    m_guide->settle();
}

void LedgerView::presentSelection()
{
    const auto& listing = m_browser->listing();
    m_selection = listing ? LedgerSelection::of(*listing, m_table->selectedEntries()) : LedgerSelection{};
    m_commands->presentSelection(m_selection);
    presentDetail();
    presentTotals();
    Q_EMIT statusContextChanged();
}

void LedgerView::presentTotals()
{
    if (const auto& listing = m_browser->listing())
        m_totals->present(LedgerTotalsStrip::contentOf(*listing, m_selection.entries.size(), m_selection.sums));
}

void LedgerView::presentDetail()
{
    const auto& listing = m_browser->listing();
    const auto& locale = InterfaceLanguage::tag();
    if (!listing)
        return;
    if (const auto& one = m_selection.one)
        m_detail->presentEntry(*one, entryKindColor(one->kind, listing->book->snapshot()));
    else if (m_selection.entries.empty())
        m_detail->presentBalances(listing->balances);
    else
        m_detail->presentSelection(m_selection.count(locale), m_selection.amounts(locale));
}

void LedgerView::presentCommands()
{
    m_commands->present(m_selection);
    showNewEntry();
}

void LedgerView::showNewEntry()
{
    m_newEntry->setVisible((*m_commands)[QStringLiteral("newEntry")]->isVisible());
}

void LedgerView::presentDue()
{
    m_messages->presentDue(m_store.templates().proposals().size());
}

void LedgerView::retranslate()
{
    m_header->setTitle(text("title"));
    m_newEntry->setMenuName(text("newEntry.kinds"));
    m_filters->retranslate();
    m_table->retranslate();
    m_totals->retranslate();
    m_detail->retranslate();
}

void LedgerView::showEntry(const std::string& id)
{
    m_guide->goTo({id}, LedgerGuide::Shows::always);
}
