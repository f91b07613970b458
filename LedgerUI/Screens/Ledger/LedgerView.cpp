#include "LedgerUI/Screens/Ledger/LedgerView.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SplitButton.h"
#include "LedgerUI/Components/Page/ListDetailPage.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Exports/ExportWords.h"
#include "LedgerUI/Presentation/Imports/ImportWords.h"
#include "LedgerUI/Presentation/Ledger/LedgerBrowser.h"
#include "LedgerUI/Presentation/Ledger/LedgerTableModel.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Screens/Entry/EntryDayPopover.h"
#include "LedgerUI/Screens/Entry/EntryDrafts.h"
#include "LedgerUI/Screens/Exports/LedgerPrinting.h"
#include "LedgerUI/Screens/Ledger/LedgerActions.h"
#include "LedgerUI/Screens/Ledger/LedgerDetailPane.h"
#include "LedgerUI/Screens/Ledger/LedgerDialogs.h"
#include "LedgerUI/Screens/Ledger/LedgerFilterRow.h"
#include "LedgerUI/Screens/Ledger/LedgerGuide.h"
#include "LedgerUI/Screens/Ledger/LedgerMessages.h"
#include "LedgerUI/Screens/Ledger/LedgerNoticeView.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"
#include "LedgerUI/Screens/Ledger/LedgerTotalsStrip.h"
#include "LedgerUI/Screens/Templates/EntryTemplates.h"

namespace {

QString text(std::string_view key)
{
    return word(ledgerWords(), key);
}

std::vector<MoneyText> netAmounts(const std::vector<LedgerTotal>& totals)
{
    std::vector<MoneyText> amounts;
    for (const auto& total : totals) {
        if (total.net)
            amounts.push_back(movementText(*total.net, total.currency, InterfaceLanguage::tag()));
    }
    return amounts;
}

/// The sums of all rows are known already.
std::vector<LedgerTotal> selectedTotals(const LedgerListing& listing, const std::vector<std::uint32_t>& selected)
{
    return selected.size() == listing.rows.size() ? listing.totals : totalsOf(listing, selected);
}

/// A menu that goes when it is left.
QMenu* menuNamed(const char* name, QWidget* parent)
{
    auto* menu = new QMenu(parent);
    menu->setObjectName(QString::fromLatin1(name));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    return menu;
}

/// The account that the ledger is narrowed to, where it is a single one.
std::optional<std::string> onlyAccount(const LedgerFilter& filter)
{
    return filter.accountIDs.size() == 1 ? std::optional{*filter.accountIDs.begin()} : std::nullopt;
}

}

LedgerView::LedgerView(LedgerStore& store, QWidget* parent) : PageView{parent}, m_store{store}
{
    setObjectName(QStringLiteral("ledgerView"));
    m_browser = new LedgerBrowser(this);
    m_actions = new ActionSet(this);
    m_dialogs = new LedgerDialogs(store, *this);
    presentActions();
    buildLayout();
    bindParts();
    bindDetail();
    bindDialogs();
    m_filters->setDetailShown(m_page->isDetailShown());
    retranslate();
    adoptSnapshot();
    // The window that the form opens over is known once the page stands in it.
    QMetaObject::invokeMethod(m_dialogs, &LedgerDialogs::offerKeptEntry, Qt::QueuedConnection);
}

void LedgerView::buildLayout()
{
    m_header = new PageHeader(this);
    m_period = new PeriodNavigator(m_header);
    m_newEntry = new SplitButton(this);
    m_newEntry->setObjectName(QStringLiteral("newEntry"));
    m_newEntry->mainButton().setObjectName(QStringLiteral("newEntryButton"));
    m_newEntry->menuButton().setObjectName(QStringLiteral("newEntryKinds"));
    m_newEntry->setGlyph(QStringLiteral("plus-lg"));
    m_newEntry->setAction((*m_actions)[QStringLiteral("newEntry")]);
    auto* kinds = new QMenu(this);
    kinds->setObjectName(QStringLiteral("newEntryMenu"));
    m_actions->fill(*kinds, LedgerActions::recordingMenu());
    m_newEntry->setMenu(kinds);
    m_header->setMiddle(m_period);
    m_header->addSecondary((*m_actions)[QStringLiteral("importLedger")]);
    m_header->addSecondary((*m_actions)[QStringLiteral("exportLedger")]);
    m_header->addSecondary((*m_actions)[QStringLiteral("printLedger")]);
    m_header->setPrimary(m_newEntry);

    m_filters = new LedgerFilterRow(this);
    m_messages = new LedgerMessages(this);
    m_table = new LedgerTable(this);
    m_notice = new LedgerNoticeView(this);
    m_totals = new LedgerTotalsStrip(this);
    m_guide = new LedgerGuide(*m_browser, *m_table, *m_messages, this);
    m_detail = new LedgerDetailPane(this);
    m_page = new ListDetailPage({.header = m_header,
                                 .filters = m_filters,
                                 .message = m_messages,
                                 .table = m_table,
                                 .notice = m_notice,
                                 .strip = m_totals,
                                 .detail = m_detail,
                                 .detailStop = m_detail->firstStop()},
                                this);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_page);
}

void LedgerView::bindParts()
{
    const auto entryWanted = [this](const QString& id) { showEntry(id.toStdString()); };
    connect(&m_store, &LedgerStore::snapshotChanged, this, &LedgerView::adoptSnapshot);
    connect(&m_store, &LedgerStore::isBusyChanged, this, [this] {
        presentActions();
        presentDetail();
    });
    connect(&EntryDrafts::of(m_store), &EntryDrafts::changed, this, &LedgerView::presentActions);
    connect(&EntryTemplates::of(m_store), &EntryTemplates::changed, this, &LedgerView::presentTemplates);
    connect(m_messages, &LedgerMessages::dueWanted, m_dialogs, &LedgerDialogs::showTemplates);
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
    connect(m_filters, &LedgerFilterRow::clearWanted, (*m_actions)[QStringLiteral("clearFilters")], &QAction::trigger);
    connect(m_filters, &LedgerFilterRow::byDayToggled, (*m_actions)[QStringLiteral("groupByDay")], &QAction::trigger);
    connect(m_filters, &LedgerFilterRow::detailToggled, m_page, &ListDetailPage::toggleDetail);
    connect(m_filters, &LedgerFilterRow::leftDownwards, m_table, &RowTable::enter);
    connect(m_filters, &LedgerFilterRow::leftByEscape, m_page, &ListDetailPage::leaveDetail);
    connect(m_messages, &LedgerMessages::entryWanted, this, entryWanted);
    connect(m_messages, &LedgerMessages::left, m_page, &ListDetailPage::focusContent);
    connect(m_notice, &LedgerNoticeView::filterWanted, m_browser, &LedgerBrowser::setFilter);
    connect(m_notice, &LedgerNoticeView::recordWanted, (*m_actions)[QStringLiteral("newEntry")], &QAction::trigger);
    connect(m_notice, &LedgerNoticeView::openingWanted, this,
            [this] { record({.kind = std::string{EntryKind::opening}, .accountID = {}, .prefilled = {}}); });
    connect(m_notice, &LedgerNoticeView::setUpWanted, this,
            [this] { Q_EMIT linkPressed({.page = WorkspacePage::accounts}); });
    connect(m_table, &RowTable::selectionMoved, this, &LedgerView::presentSelection);
    connect(m_table, &RowTable::opened, m_page, &ListDetailPage::openDetail);
    connect(m_table, &RowTable::menuWanted, this, &LedgerView::openMenu);
    connect(m_table, &LedgerTable::sortWanted, m_browser, &LedgerBrowser::setSort);
    connect(m_table, &LedgerTable::columnsWanted, this, [this](QPoint place) {
        auto* menu = menuNamed("columnsMenu", m_table);
        m_actions->fill(*menu, LedgerActions::columnsMenu() << QString{} << QStringLiteral("groupByDay"));
        menu->popup(place);
    });
}

void LedgerView::bindDetail()
{
    connect(m_detail, &LedgerDetailPane::closeWanted, m_page, &ListDetailPage::closeDetail);
    connect(m_detail, &LedgerDetailPane::left, m_page, &ListDetailPage::leaveDetail);
    connect(m_detail, &LedgerDetailPane::reversalWanted, this,
            [this](const QString& id) { m_dialogs->reverse(id.toStdString()); });
    connect(m_detail, &LedgerDetailPane::sharingWanted, this,
            [this](const QString& id) { m_dialogs->share(id.toStdString()); });
    connect(m_detail, &LedgerDetailPane::entryWanted, this, [this](const QString& id) { showEntry(id.toStdString()); });
    connect(m_detail, &LedgerDetailPane::receiptWanted, this,
            [this](const QString& id, std::size_t at) { m_dialogs->showReceipt(id.toStdString(), at); });
    connect(m_detail, &LedgerDetailPane::receiptsOffered, this,
            [this](const QString& id, const std::vector<ReceiptSource>& sources) {
                m_dialogs->addReceipts({.entryID = id.toStdString(), .sources = sources});
            });
    connect(m_detail, &LedgerDetailPane::recordWanted, this, &LedgerView::linkPressed);
    connect(m_detail, &LedgerDetailPane::accountWanted, this,
            [this](const QString& id) { showOnlyAccount(id.toStdString()); });
}

void LedgerView::bindDialogs()
{
    connect(m_dialogs, &LedgerDialogs::recorded, this,
            [this](const QString& id) { m_guide->goTo({id.toStdString()}, LedgerGuide::Shows::whereItStands); });
    connect(m_dialogs, &LedgerDialogs::reversed, this, [this](const QString& id) { showEntry(id.toStdString()); });
    connect(m_dialogs, &LedgerDialogs::imported, this,
            [this](const std::vector<std::string>& ids) { m_guide->goTo(ids, LedgerGuide::Shows::always); });
    connect(m_dialogs, &LedgerDialogs::done, this, &LedgerView::done);
}

QList<QWidget*> LedgerView::panes() const
{
    return m_page->panes();
}

PageView::StatusContext LedgerView::statusContext() const
{
    if (m_selected.empty())
        return {};
    // The status bar must never keep the window from shrinking: the pane has every sum.
    const qsizetype shown = m_page->isNarrow() ? 2 : 4;
    QStringList figures;
    for (const auto& amount : netAmounts(m_sums))
        figures << amount.text();
    const auto left = figures.size() - shown;
    if (left > 0)
        figures = figures.first(shown) << QStringLiteral("+%1").arg(left);
    return {countedIn(InterfaceLanguage::tag(), ledgerWords(), "selected", m_selected.size()),
            figures.join(QStringLiteral("   "))};
}

void LedgerView::follow(const PageLink& link)
{
    if (link.action == PageAction::newEntry) {
        (*m_actions)[QStringLiteral("newEntry")]->trigger();
    } else if (link.action == PageAction::showEntries && link.entries) {
        m_browser->setFilter(*link.entries);
        m_page->focusContent();
    } else if (link.action == PageAction::showEntry) {
        showEntry(link.subject);
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
    const auto today = LedgerDay::parse(m_store.today());
    presentTemplates();
    m_browser->open(m_store.snapshot(), InterfaceLanguage::tag(),
                    today.value_or(std::chrono::year{1970} / std::chrono::January / 1));
}

void LedgerView::present()
{
    if (!m_browser->book()) { // signed out: what was chosen is no place in any book
        m_selected.clear();
        m_sums.clear();
        m_chosen.reset();
    }
    m_period->present(m_browser->filter().period, m_browser->counts(), m_browser->today());
    m_filters->present(*m_browser);
    if (const auto& listing = m_browser->listing()) {
        const auto& book = *listing->book;
        m_table->present(*m_browser);
        if (listing->notice)
            m_notice->present(*listing->notice);
        m_totals->present(LedgerTotalsStrip::contentOf(*m_browser->listing(), m_selected.size(), m_sums));
        presentColumns();
        m_page->setHasContents(book.size() > 0);
        m_page->show(listing->notice ? ListDetailPage::Content::notice : ListDetailPage::Content::table);
    } else if (m_browser->isPreparing()) {
        m_notice->presentWaiting(text("preparing"));
        m_page->show(ListDetailPage::Content::notice);
    }
    m_messages->present(*m_browser);
    presentActions();
    m_guide->settle();
}

void LedgerView::presentColumns()
{
    m_actions->present(LedgerActions::columns(*m_table, [this] { presentColumns(); }));
}

/// Worked out once for each selection: whole ledgers can be selected, and one entry's balances take a pass over all.
void LedgerView::presentSelection()
{
    const auto book = m_browser->book();
    m_selected = m_table->selectedEntries();
    m_sums = book ? selectedTotals(*m_browser->listing(), m_selected) : std::vector<LedgerTotal>{};
    m_chosen = book && m_selected.size() == 1 ? std::optional{detailOf(*book, m_selected.front())} : std::nullopt;
    presentRowActions();
    presentDetail();
    if (m_browser->listing())
        m_totals->present(LedgerTotalsStrip::contentOf(*m_browser->listing(), m_selected.size(), m_sums));
    Q_EMIT statusContextChanged();
}

void LedgerView::presentDetail()
{
    const auto& listing = m_browser->listing();
    if (!listing)
        return;
    if (m_selected.empty()) {
        m_detail->presentBalances(listing->balances);
    } else if (m_chosen) {
        m_detail->presentEntry(*m_chosen, entryKindColor(m_chosen->kind, listing->book->snapshot()), m_store.isBusy());
    } else {
        m_detail->presentSelection(countedIn(InterfaceLanguage::tag(), ledgerWords(), "selected", m_selected.size()),
                                   netAmounts(m_sums));
    }
}

void LedgerView::presentActions()
{
    m_actions->present(LedgerActions::recording(
        m_store, [this](const EntryForm::Opening& opening) { record(opening); },
        [this] { m_dialogs->showTemplates(); }));
    m_actions->present(pageActions());
    m_actions->present(
        {LedgerPrinting::list(m_store, *m_browser, this, [this](const QString& what) { Q_EMIT done(what); })});
    m_actions->present(LedgerActions::sorting(
        {.sort = m_browser->sort(),
         .isByDay = m_browser->isByDay(),
         .sortBy = [this](LedgerSort::Key key) { m_browser->setSort(m_table->sortedBy(key)); },
         .turnGrouping =
             [this] { m_browser->setGrouping(m_browser->isByDay() ? LedgerGrouping::none : LedgerGrouping::byDay); }}));
    presentRowActions();
    if (m_newEntry)
        m_newEntry->setVisible((*m_actions)[QStringLiteral("newEntry")]->isVisible());
}

void LedgerView::presentRowActions()
{
    const auto one = m_chosen ? m_selected.front() : LedgerBook::none;
    m_actions->present({LedgerPrinting::entry(m_store, m_browser->book(), one, this,
                                              [this](const QString& what) { Q_EMIT done(what); })});
    m_actions->present(
        LedgerActions::onEntries({.book = m_browser->book(),
                                  .entries = m_selected,
                                  .detail = m_chosen,
                                  .isBusy = m_store.isBusy(),
                                  .open = [this] { m_page->openDetail(); },
                                  .copy = [this] { m_table->copySelection(); },
                                  .reverse = [this](const std::string& id) { m_dialogs->reverse(id); },
                                  .reverseSeveral = [this](const auto& ids) { m_dialogs->reverse(ids); },
                                  .duplicate = [this](const std::string& id) { m_dialogs->duplicate(id); },
                                  .keepTemplate = templateKeeper(),
                                  .refund = [this](const LedgerRefund& begun) { m_dialogs->refund(begun); },
                                  .share = [this](const std::string& id) { m_dialogs->share(id); },
                                  .showOnly = [this](const std::string& id) { showOnlyAccount(id); }}));
}

std::function<void(const std::string& entryID)> LedgerView::templateKeeper()
{
    if (!EntryTemplates::of(m_store).areOffered())
        return {};
    return [this](const std::string& id) { m_dialogs->keepTemplate(id); };
}

void LedgerView::presentTemplates()
{
    presentActions();
    if (m_messages)
        m_messages->presentDue(EntryTemplates::of(m_store).proposals().size());
}

std::vector<Action> LedgerView::pageActions()
{
    const auto keyed = [](const char* id, Command command, std::function<void()> run) {
        return Action{
            .id = QString::fromLatin1(id), .text = {}, .keys = KeyBindings::keys(command), .run = std::move(run)};
    };
    const auto busy = m_store.isBusy() ? text("newEntry.busy") : QString{};
    return {{.id = QStringLiteral("importLedger"),
             .text = word(importWords(), "action"),
             .glyph = QStringLiteral("box-arrow-in-down"),
             .whyNot = busy,
             .isOffered = m_store.canViewCompany() && m_store.canRecord(),
             .run = [this] { m_dialogs->importEntries(); }},
            {.id = QStringLiteral("exportLedger"),
             .text = word(exportWords(), "action"),
             .glyph = QStringLiteral("box-arrow-up"),
             .keys = KeyBindings::keys(Command::exportRows),
             .whyNot = busy,
             .isOffered = m_store.canExport(),
             .run = [this] { m_dialogs->exportEntries(m_browser->filter()); }},
            keyed("search", Command::search, [this] { m_filters->focusSearch(); }),
            keyed("previousPeriod", Command::previousPeriod, [this] { m_period->goBack(); }),
            keyed("nextPeriod", Command::nextPeriod, [this] { m_period->goForward(); }),
            keyed("openPeriod", Command::openPeriod,
                  [this] {
                      if (!m_filters->openFocused())
                          m_period->openPopover();
                  }),
            {.id = QStringLiteral("jumpToDay"),
             .text = text("action.jump"),
             .glyph = QStringLiteral("calendar-event"),
             .keys = KeyBindings::keys(Command::jumpToDay),
             .run = [this] { openDays(); }},
            keyed("toggleDetail", Command::toggleDetail, [this] { m_page->toggleDetail(); }),
            keyed("sortNext", Command::sortNext, [this] { m_browser->setSort(m_table->sortedByNext()); }),
            keyed("clearFilters", Command::clearFilters, [this] {
                m_browser->setFilter(m_browser->clearedFilter());
                m_page->focusContent();
            })};
}

void LedgerView::openMenu(QPoint place)
{
    auto* menu = menuNamed("entryMenu", m_table);
    m_actions->fill(*menu, LedgerActions::entryMenu() << QStringLiteral("printEntry"));
    m_actions->fill(*menu->addMenu(text("action.sort")), LedgerActions::sortingMenu());
    m_actions->fill(*menu->addMenu(text("columns")), LedgerActions::columnsMenu());
    m_actions->fill(*menu, {QStringLiteral("jumpToDay")});
    menu->popup(place);
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

void LedgerView::showOnlyAccount(const std::string& accountID)
{
    auto filter = m_browser->filter();
    filter.accountIDs = {accountID};
    m_browser->setFilter(filter);
}

void LedgerView::openDays()
{
    const auto today = LedgerDay::format(m_browser->today());
    if (!m_days) {
        m_days = new EntryDayPopover(m_period, Popover::Edge::below);
        connect(m_days, &EntryDayPopover::dayChosen, m_guide, &LedgerGuide::goToDay);
    }
    const auto last = LedgerDay::format(m_browser->counts().horizon(m_browser->today()));
    m_days->openOn(today, {.earliest = {}, .latest = std::max(today, last), .today = today});
}

void LedgerView::showEntry(const std::string& id)
{
    m_guide->goTo({id}, LedgerGuide::Shows::always);
}

void LedgerView::record(EntryForm::Opening opening)
{
    if (!opening.prefilled)
        opening.accountID = onlyAccount(m_browser->filter());
    m_dialogs->record(opening);
}
