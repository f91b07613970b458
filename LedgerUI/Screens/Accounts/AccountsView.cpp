#include "LedgerUI/Screens/Accounts/AccountsView.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QCheckBox>
#include <QEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/SearchField.h"
#include "LedgerUI/Components/Page/ListDetailPage.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Accounts/AccountBrowser.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Accounts/AccountActions.h"
#include "LedgerUI/Screens/Accounts/AccountDetailPane.h"
#include "LedgerUI/Screens/Accounts/AccountDialogs.h"
#include "LedgerUI/Screens/Accounts/AccountMessages.h"
#include "LedgerUI/Screens/Accounts/AccountNoticeView.h"
#include "LedgerUI/Screens/Accounts/AccountTable.h"
#include "LedgerUI/Screens/Accounts/AccountTotalsStrip.h"
#include "LedgerUI/Screens/Exports/LedgerPrinting.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int searchNarrow = 190;
constexpr int searchWide = 290;

QString text(std::string_view key)
{
    return word(accountWords(), key);
}

}

AccountsView::AccountsView(LedgerStore& store, QWidget* parent) : PageView{parent}, m_store{store}
{
    setObjectName(QStringLiteral("accountsView"));
    m_browser = new AccountBrowser(this);
    m_dialogs = new AccountDialogs(m_store, this);
    m_actions = new ActionSet(this);
    presentActions();
    buildLayout();
    bindParts();
    retranslate();
    adoptSnapshot();
}

void AccountsView::buildHeader()
{
    m_header = new PageHeader(m_page);
    m_search = new SearchField(m_header);
    m_search->setObjectName(QStringLiteral("accountSearch"));
    m_search->setFixedWidth(searchWide);
    m_search->installEventFilter(this);
    m_header->setMiddle(m_search);
    m_showArchived = new QCheckBox(m_header);
    m_showArchived->setObjectName(QStringLiteral("showArchived"));
    m_header->setPrimary(m_showArchived);
    m_header->addSecondary((*m_actions)[QStringLiteral("recordOpenings")]);
    m_new = new PrimaryButton(m_header);
    m_new->setObjectName(QStringLiteral("newAccountButton"));
    m_new->setIcon(Icon::of(QStringLiteral("plus-lg"), Token::onAccent));
    m_new->setIconSize({Space::iconBeforeText, Space::icon});
    m_header->setPrimary(m_new);
    connect(m_new, &QPushButton::clicked, (*m_actions)[QStringLiteral("newAccount")], &QAction::trigger);
}

void AccountsView::buildLayout()
{
    m_page = new ListDetailPage(this);
    buildHeader();
    m_table = new AccountTable(m_page->listPlace());
    m_notice = new AccountNoticeView(m_page->listPlace());
    m_totals = new AccountTotalsStrip(m_page->stripPlace());
    m_messages = new AccountMessages(m_page);
    m_detail = new AccountDetailPane(*m_actions, m_page->detailPlace());
    m_page->arrange({.header = m_header,
                     .message = m_messages,
                     .table = m_table,
                     .notice = m_notice,
                     .strip = m_totals,
                     .detail = m_detail,
                     .detailStop = m_detail->firstStop()});
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_page);
}

void AccountsView::bindParts()
{
    connect(&m_store, &LedgerStore::snapshotChanged, this, &AccountsView::adoptSnapshot);
    connect(&m_store, &LedgerStore::isBusyChanged, this, &AccountsView::presentActions);
    connect(m_browser, &AccountBrowser::changed, this, &AccountsView::present);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& typed) {
        auto query = m_browser->query();
        query.search = typed;
        ask(std::move(query));
    });
    connect(m_showArchived, &QCheckBox::toggled, this, [this](bool isOn) {
        auto query = m_browser->query();
        query.showsArchived = isOn;
        ask(std::move(query));
    });
    connect(m_notice, &AccountNoticeView::remedyWanted, this, [this](AccountNotice::Remedy remedy) {
        if (remedy == AccountNotice::Remedy::clearSearch)
            m_search->clear();
        else
            m_showArchived->setChecked(true);
        m_page->focusContent();
    });
    connect(m_notice, &AccountNoticeView::stepWanted, this, &AccountsView::press);
    connect(m_dialogs, &AccountDialogs::changed, this, [this](const QString& accountID, const QString& sentence) {
        if (!accountID.isEmpty())
            showAccount(accountID.toStdString());
        Q_EMIT done(sentence);
    });
    connect(m_dialogs, &AccountDialogs::openingRecorded, this, [this] {
        m_isRecordingOpenings = true;
        presentMessage();
        m_messages->enter();
        Q_EMIT done(text("done.opening"));
    });
    connect(m_messages, &AccountMessages::left, m_page, &ListDetailPage::focusContent);
    connect(m_table, &RowTable::selectionMoved, this, &AccountsView::presentSelection);
    connect(m_table, &RowTable::opened, m_page, &ListDetailPage::openDetail);
    connect(m_table, &RowTable::menuWanted, this, &AccountsView::openMenu);
    connect(m_table, &AccountTable::nameHeadPressed, this,
            [this] { (*m_actions)[QStringLiteral("sort.name")]->trigger(); });
    connect(m_table, &AccountTable::balanceHeadPressed, this, &AccountsView::openSortMenu);
    connect(m_page, &ListDetailPage::arranged, this, &AccountsView::presentSearch);
    connect(m_detail, &AccountDetailPane::closeWanted, m_page, &ListDetailPage::closeDetail);
    connect(m_detail, &AccountDetailPane::left, m_page, &ListDetailPage::leaveDetail);
    connect(m_detail, &AccountDetailPane::menuWanted, this, &AccountsView::openMenu);
    connect(m_detail, &AccountDetailPane::entryWanted, this, [this](const QString& entry) {
        Q_EMIT linkPressed(
            {.page = WorkspacePage::ledger, .action = PageAction::showEntry, .subject = entry.toStdString()});
    });
}

QList<QWidget*> AccountsView::panes() const
{
    return m_page->panes();
}

PageView::StatusContext AccountsView::statusContext() const
{
    const auto& listing = m_browser->listing();
    if (!listing || listing->notice)
        return {};
    return {countedIn(InterfaceLanguage::tag(), accountWords(), "count", listing->accounts), {}};
}

void AccountsView::follow(const PageLink& link)
{
    if (link.action == PageAction::showAccount)
        showAccount(link.subject);
    else if (link.action == PageAction::openingBalance)
        (*m_actions)[QStringLiteral("recordOpenings")]->trigger();
    else if (link.action == PageAction::newAccount)
        (*m_actions)[QStringLiteral("newAccount")]->trigger();
}

void AccountsView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        adoptSnapshot();
    }
    PageView::changeEvent(event);
}

/// Down goes on from the search to what it found, Esc gives it up.
bool AccountsView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const auto key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down && !m_browser->listing()->notice) {
            m_table->enter();
            return true;
        }
        if (key == Qt::Key_Escape) {
            m_page->leaveDetail();
            return true;
        }
    }
    return PageView::eventFilter(watched, event);
}

void AccountsView::adoptSnapshot()
{
    const auto today = LedgerDay::parse(m_store.today());
    m_browser->open(m_store.snapshot(), InterfaceLanguage::tag(),
                    today.value_or(std::chrono::year{1970} / std::chrono::January / 1));
}

void AccountsView::present()
{
    if (const auto& listing = m_browser->listing()) {
        m_table->present(listing);
        if (!m_table->chosen() && !m_page->isNarrow())
            m_table->chooseFirst(); // so that the pane beside the table has something to say
        m_totals->present(listing->totals);
        if (const auto& notice = listing->notice)
            m_notice->present(*notice, setupChecklist(*listing->book, InterfaceLanguage::tag()));
        const bool hasAccounts = !listing->book->snapshot().accounts.empty();
        m_search->setVisible(hasAccounts);
        m_header->setFocusProxy(hasAccounts ? m_search : nullptr); // Tab would end at one that is hidden
        m_showArchived->setVisible(std::ranges::any_of(listing->book->snapshot().accounts, &Account::archived));
        m_page->setHasContents(hasAccounts);
        m_page->show(listing->notice ? ListDetailPage::Content::notice : ListDetailPage::Content::table);
    } else if (m_browser->isPreparing()) {
        m_notice->presentWaiting(text("preparing"));
        m_page->show(ListDetailPage::Content::notice);
    }
    presentSelection();
    presentMessage();
    if (!m_awaited.empty() && m_browser->listing() && !m_browser->isPreparing())
        showAccount(std::exchange(m_awaited, {}));
    Q_EMIT statusContextChanged();
}

void AccountsView::presentSelection()
{
    const auto* line = m_browser->listing() ? m_table->chosen() : nullptr;
    if (line) {
        const auto& book = *m_browser->listing()->book;
        m_chosen = accountDetail(book, *line, InterfaceLanguage::tag());
        presentActions();
        m_detail->present(*m_chosen, book.snapshot());
    } else {
        m_chosen.reset();
        presentActions();
        m_detail->presentNothing();
    }
}

void AccountsView::presentActions()
{
    m_actions->present(pageActions());
    const auto chosen = m_chosen.value_or(AccountDetail{});
    m_actions->present(AccountActions::onAccount(
        {.detail = m_chosen,
         .isBusy = m_store.isBusy(),
         .open = [this] { m_page->openDetail(); },
         .showInLedger = [this] { showInLedger(); },
         .recordOpening = [this, chosen] { m_dialogs->recordOpening(chosen.accountID, chosen.currency); },
         .edit = [this, chosen] { m_dialogs->edit(chosen.accountID); },
         .addCurrency = [this, chosen] { m_dialogs->edit(chosen.accountID, AccountField::currencies); },
         .changeState = [this, chosen] { m_dialogs->changeState(chosen.accountID); },
         .offersStatements = m_store.canExport(),
         .today = LedgerDay::parse(m_store.today()).value_or(std::chrono::year{1970} / std::chrono::January / 1),
         .printStatement = [this, chosen](const Period& period) { printStatement(chosen.accountID, period); }}));
    const auto& listing = m_browser->listing();
    m_actions->present(AccountActions::beginning({.mayManage = m_store.canManage(),
                                                  .isBusy = m_store.isBusy(),
                                                  .openingsDue = listing ? openingsDue(*listing->book).size() : 0,
                                                  .newAccount = [this] { m_dialogs->create(); },
                                                  .recordOpenings = [this] { recordNextOpening(); }}));
    if (listing)
        m_actions->present(AccountActions::sorting(*listing, [this](const AccountSort& sort) {
            auto query = m_browser->query();
            query.sort = sort;
            ask(std::move(query));
        }));
    if (m_new)
        presentNewButton();
}

void AccountsView::presentNewButton()
{
    const auto* action = (*m_actions)[QStringLiteral("newAccount")];
    m_new->setText(action->text());
    m_new->setToolTip(action->toolTip());
    m_new->setEnabled(action->isEnabled());
    m_new->setVisible(action->isVisible());
}

std::vector<Action> AccountsView::pageActions()
{
    return {keyedAction("search", Command::search,
                        [this] {
                            m_search->setFocus(Qt::ShortcutFocusReason);
                            m_search->selectAll();
                        }),
            keyedAction("toggleDetail", Command::toggleDetail, [this] { m_page->toggleDetail(); })};
}

void AccountsView::openMenu(QPoint place)
{
    if (!m_browser->listing())
        return;
    auto* menu = new QMenu(m_table);
    menu->setObjectName(QStringLiteral("accountMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    m_actions->fill(*menu, AccountActions::accountMenu());
    menu->addSeparator();
    m_actions->fill(*menu, AccountActions::sortingMenu(*m_browser->listing()));
    menu->popup(place);
}

void AccountsView::openSortMenu(QPoint place)
{
    auto* menu = new QMenu(m_table);
    menu->setObjectName(QStringLiteral("accountSortMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    m_actions->fill(*menu, AccountActions::sortingMenu(*m_browser->listing()));
    menu->popup(place);
}

void AccountsView::retranslate()
{
    m_header->setTitle(word(workspaceWords(), "accounts"));
    presentSearch();
    m_showArchived->setText(text("showArchived"));
    m_table->retranslate();
    m_totals->retranslate();
    m_detail->retranslate();
}

/// In a small window the prompt says less than readers hear.
void AccountsView::presentSearch()
{
    const bool isNarrow = m_page->isNarrow();
    m_search->setFixedWidth(isNarrow ? searchNarrow : searchWide);
    m_search->setPrompt(text("search"));
    if (isNarrow)
        m_search->setPlaceholderText(text("search.short"));
}

void AccountsView::ask(AccountQuery query)
{
    m_browser->setQuery(std::move(query));
}

/// Large books are made ready after their snapshot came: the account is gone to as soon as it is there.
void AccountsView::showAccount(const std::string& accountID)
{
    const auto& listing = m_browser->listing();
    if (!listing || m_browser->isPreparing()) {
        m_awaited = accountID;
        return;
    }
    const auto* account = listing->book->snapshot().account(accountID);
    if (!account)
        return;
    m_search->clear();
    if (account->archived)
        m_showArchived->setChecked(true);
    if (m_table->choose(accountRowID(accountID, account->currencies.front())))
        m_table->setFocus(Qt::OtherFocusReason);
}

void AccountsView::recordNextOpening()
{
    const auto& listing = m_browser->listing();
    const auto due = listing ? openingsDue(*listing->book) : std::vector<const AccountBook::Line*>{};
    if (!due.empty())
        m_dialogs->recordOpening(listing->book->account(*due.front()).id, due.front()->currency);
}

/// After an opening balance the next one is offered; else a new company is told its next step.
void AccountsView::presentMessage()
{
    const auto& listing = m_browser->listing();
    if (!listing)
        return;
    const auto& book = *listing->book;
    if (const auto due = openingsDue(book); m_isRecordingOpenings && !due.empty()) {
        const auto& next = *due.front();
        m_messages->present(AccountMessages::Offer{
            word(accountWords(), "openings.next", {book.account(next).name, next.currency, std::to_string(due.size())}),
            text("openings.go"), [this] { recordNextOpening(); }});
        return;
    }
    m_isRecordingOpenings = false;
    const auto setup = setupChecklist(book, InterfaceLanguage::tag());
    const auto& notice = listing->notice;
    if (!setup || (notice && notice->reason == AccountNotice::Reason::noAccounts)) {
        m_messages->present(std::nullopt);
        return;
    }
    const auto& step = *setup->next();
    m_messages->present(AccountMessages::Offer{
        word(accountWords(), "setup.banner", {setup->progress.toStdString(), step.title.toStdString()}), step.button,
        [this, link = step.link] { press(link); }});
}

void AccountsView::press(const PageLink& link)
{
    if (link.page == WorkspacePage::accounts)
        follow(link);
    else
        Q_EMIT linkPressed(link);
}

void AccountsView::printStatement(const std::string& accountID, const Period& period)
{
    LedgerPrinting::statement(m_store, accountID, period, this, [this](const QString& what) { Q_EMIT done(what); });
}

void AccountsView::showInLedger()
{
    if (m_chosen)
        Q_EMIT linkPressed(
            {.page = WorkspacePage::ledger, .action = PageAction::showAccount, .subject = m_chosen->accountID});
}
