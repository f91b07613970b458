#include "LedgerUI/Screens/Workspace/WorkspaceView.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QCoro/QCoroTask>
#include <QDialog>
#include <QEvent>
#include <QHBoxLayout>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Page/BusyBar.h"
#include "LedgerUI/Components/Page/StatusBar.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Workspace/WorkspaceStatus.h"
#include "LedgerUI/Screens/Workspace/PageRegistry.h"
#include "LedgerUI/Screens/Workspace/PageView.h"
#include "LedgerUI/Screens/Workspace/SideBar.h"
#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"
#include "LedgerUI/Theme/Space.h"

WorkspaceView::WorkspaceView(LedgerStore& store, const PageRegistry& registry, QWidget* parent)
    : QWidget{parent}, m_store{store}, m_registry{registry}, m_today{store.today()}
{
    setObjectName(QStringLiteral("workspaceView"));
    buildLayout();
    bindKeys();
    connect(m_sideBar, &SideBar::pageChosen, this, &WorkspaceView::turnTo);
    connect(m_sideBar, &SideBar::settingsWanted, this, &WorkspaceView::settingsWanted);
    connect(m_sideBar, &SideBar::done, m_status, &StatusBar::say);
    connect(m_status, &StatusBar::refreshRequested, this, &WorkspaceView::refresh);
    connect(m_status, &StatusBar::unconfirmedRequested, this, &WorkspaceView::unconfirmedWanted);
    connect(&m_store, &LedgerStore::keptChanged, this, &WorkspaceView::presentStatus);
    connect(&m_store, &LedgerStore::snapshotChanged, this, [this] {
        presentPages();
        presentStatus();
    });
    connect(&m_store, &LedgerStore::isBusyChanged, this, &WorkspaceView::presentStatus);
    connect(&m_store, &LedgerStore::lastRefreshChanged, this, &WorkspaceView::presentStatus);
    connect(&m_store, &LedgerStore::lastRefreshChanged, this, &WorkspaceView::followDay);
    connect(&m_store, &LedgerStore::isStaleChanged, this, &WorkspaceView::presentStatus);
    connect(&m_store.drafts(), &EntryDrafts::arrived, this, &WorkspaceView::showKeptEntry);
    m_firstPage.setSingleShot(true);
    connect(&m_firstPage, &QTimer::timeout, this, &WorkspaceView::openFirstPage);
    presentPages();
    presentStatus();
}

void WorkspaceView::open(WorkspacePage page)
{
    if (std::ranges::find(m_pages, page) == m_pages.end())
        return;
    m_status->say({});
    auto* view = made(page);
    if (m_stack->indexOf(view) < 0)
        m_stack->addWidget(view);
    m_stack->setCurrentWidget(view);
    // Page, status bar, and round to the side bar: whatever was made last stands at the end otherwise.
    FocusChain::continueWith(view, m_status->tabStop());
    m_sideBar->comeAfter(m_status->tabStop());
    m_sideBar->choose(page);
    presentContext();
}

/// The page in the place where it is to stand, seen or not.
PageView* WorkspaceView::made(WorkspacePage page)
{
    auto& view = m_views[page];
    if (view)
        return view;
    view = m_registry.make(page, m_store, m_stack);
    connect(view, &PageView::statusContextChanged, this, &WorkspaceView::presentContext);
    connect(view, &PageView::done, m_status, &StatusBar::say);
    connect(view, &PageView::linkPressed, this, &WorkspaceView::follow);
    connect(view, &PageView::unconfirmedWanted, this, &WorkspaceView::unconfirmedWanted);
    return view;
}

void WorkspaceView::follow(const PageLink& link)
{
    if (std::ranges::find(m_pages, link.page) == m_pages.end())
        return;
    leaveFor(link.page, [this, link] {
        open(link.page);
        m_views.at(link.page)->follow(link);
    });
}

void WorkspaceView::turnTo(WorkspacePage page)
{
    leaveFor(page, [this, page] { open(page); });
}

void WorkspaceView::leaveFor(WorkspacePage page, std::function<void()> proceed)
{
    const auto shown = shownPage();
    if (shown == page)
        return proceed();
    UnsavedChanges::leave(*this, std::move(proceed), [this] {
        if (const auto stays = shownPage())
            m_sideBar->choose(*stays); // which has marked the other page already
    });
}

/// A window that stays open over night comes to another day with the same books.
void WorkspaceView::followDay()
{
    const auto today = m_store.today();
    if (std::exchange(m_today, today) == today)
        return;
    for (const auto& [page, view] : m_views)
        view->followDay();
}

void WorkspaceView::refreshOnReturn()
{
    followDay();
    QCoro::connect(m_store.refreshQuietly(), this, [this, wasStale = m_store.isStale()](const Result<void>& refreshed) {
        if (refreshed)
            readInvitations();
        else if (!wasStale)
            tellOutage(refreshed.error());
    });
}

void WorkspaceView::tellOutage(const Failure& failure)
{
    if (!m_store.isStale())
        return;
    const auto* const above = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!above)
        return m_store.publish(failure);
    connect(above, &QDialog::finished, this, [this, failure] { tellOutage(failure); }, Qt::QueuedConnection);
}

void WorkspaceView::readInvitations()
{
    if (!m_store.snapshot() || !m_store.canManage())
        return;
    QCoro::connect(m_store.loadInvitationsQuietly(), this,
                   [this](const Result<std::vector<PendingInvitation>>& invitations) {
                       if (!invitations || !m_store.snapshot())
                           return;
                       for (const auto& [page, view] : m_views)
                           view->adoptInvitations(*invitations);
                   });
}

void WorkspaceView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        presentStatus();
        presentContext();
        m_status->say({});
    }
    QWidget::changeEvent(event);
}

void WorkspaceView::resizeEvent(QResizeEvent* event)
{
    m_sideBar->setFolded(width() < Space::foldBelow);
    QWidget::resizeEvent(event);
}

void WorkspaceView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    focusStart();
}

void WorkspaceView::focusStart()
{
    const auto* page = currentPage();
    for (auto* pane : page ? page->panes() : QList<QWidget*>{}) {
        if (auto* stop = FocusChain::firstStop(pane)) {
            stop->setFocus();
            return;
        }
    }
    // Keys must go somewhere that can be seen, also from a page on which nothing can be done yet.
    if (auto* chosen = m_sideBar->focusTarget())
        chosen->setFocus();
}

void WorkspaceView::buildLayout()
{
    m_sideBar = new SideBar(m_store, this);
    auto* column = new QWidget(this);
    m_stack = new QStackedWidget(column);
    m_status = new StatusBar(column);
    auto* rows = new QVBoxLayout(column);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_stack, 1);
    rows->addWidget(m_status);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_sideBar);
    layout->addWidget(column, 1);
    m_busy = new BusyBar(column);
    m_busy->overlay(column, Space::pageHeader);
}

void WorkspaceView::bindKeys()
{
    const auto bind = [this](const QList<QKeySequence>& sequences, auto action) {
        for (const auto& keys : sequences)
            connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    bind(KeyBindings::keys(Command::refresh), [this] { refresh(); });
    bind(KeyBindings::keys(Command::companies), [this] { m_sideBar->openCompanyMenu(); });
    bind(KeyBindings::keys(Command::settings), [this] { Q_EMIT settingsWanted(); });
    bind(KeyBindings::keys(Command::nextPane), [this] { movePane(Step::next); });
    bind(KeyBindings::keys(Command::previousPane), [this] { movePane(Step::previous); });
    for (qsizetype position = 0; position < KeyBindings::boundPages; ++position) {
        bind(KeyBindings::pageKeys(position), [this, position] {
            if (position < static_cast<qsizetype>(m_pages.size()))
                turnTo(m_pages[static_cast<std::size_t>(position)]);
        });
    }
}

void WorkspaceView::presentPages()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    auto pages = WorkspacePages::visible(*snapshot);
    std::erase_if(pages, [this](WorkspacePage page) { return !m_registry.contains(page); });
    if (pages == m_pages)
        return;
    const auto chosen = shownPage();
    m_pages = std::move(pages);
    m_sideBar->setPages(m_pages);
    const bool isKept = chosen && std::ranges::find(m_pages, *chosen) != m_pages.end();
    if (isKept)
        open(*chosen);
    else if (!currentPage())
        m_firstPage.start(0);
    else if (!m_pages.empty())
        open(m_pages.front());
}

/// Made in one turn and shown in the next, as the frame around it was in the one before: together they would keep the
/// window from answering for longer than it takes to paint a picture.
void WorkspaceView::openFirstPage()
{
    if (currentPage() || m_pages.empty())
        return;
    const auto page = firstPage();
    if (!m_views.contains(page)) {
        made(page);
        m_firstPage.start(0);
        return;
    }
    const bool isUntouched = !focusWidget() || focusWidget() == m_sideBar->focusTarget();
    open(page);
    if (isVisible() && isUntouched)
        focusStart();
}

/// What is not known to be recorded comes back on its page, before it can be typed a second time.
WorkspacePage WorkspaceView::firstPage() const
{
    const auto has = [this](WorkspacePage page) { return std::ranges::find(m_pages, page) != m_pages.end(); };
    if (m_store.keptEntry() && has(WorkspacePage::ledger))
        return WorkspacePage::ledger;
    if (m_store.keptSectionCommand() && has(WorkspacePage::dividends))
        return WorkspacePage::dividends;
    return m_pages.front();
}

/// The same for what another program had sent, which the service has told only now.
void WorkspaceView::showKeptEntry()
{
    if (m_store.keptEntry() && currentPage() && !QApplication::activeModalWidget())
        turnTo(WorkspacePage::ledger);
}

void WorkspaceView::presentStatus()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    const auto status = workspaceStatus({.lastRefresh = m_store.lastRefresh(),
                                         .isBusy = m_store.isBusy(),
                                         .isStale = m_store.isStale(),
                                         .entries = snapshot->transactions.size(),
                                         .unconfirmed = m_store.keptRequests().count()},
                                        InterfaceLanguage::tag());
    m_status->setRefreshText(status.refresh,
                             status.isWarning ? StatusBar::Freshness::stale : StatusBar::Freshness::fresh);
    m_status->setRefreshHint(status.refreshHint);
    m_status->setRefreshEnabled(!m_store.isBusy());
    m_status->setCount(status.count);
    m_status->setUnconfirmed(status.unconfirmed);
    m_busy->setBusy(m_store.isBusy());
}

void WorkspaceView::presentContext()
{
    const auto* page = currentPage();
    const auto context = page ? page->statusContext() : PageView::StatusContext{};
    m_status->setContext(context.text, context.figure);
}

void WorkspaceView::refresh()
{
    QCoro::connect(m_store.refreshFromUser(), this, [](const Result<void>&) {});
}

void WorkspaceView::movePane(Step step)
{
    const auto all = panes();
    if (all.isEmpty())
        return;
    const auto count = all.size();
    const auto holder = std::ranges::find_if(all, FocusChain::hasFocus);
    const auto from = holder == all.end() ? (step == Step::next ? count - 1 : 0) : holder - all.begin();
    const auto by = step == Step::next ? 1 : count - 1;
    for (auto at = (from + by) % count; at != from; at = (at + by) % count) {
        if (auto* stop = all[at] == m_sideBar ? m_sideBar->focusTarget() : FocusChain::firstStop(all[at])) {
            stop->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}

PageView* WorkspaceView::currentPage() const
{
    return qobject_cast<PageView*>(m_stack->currentWidget());
}

std::optional<WorkspacePage> WorkspaceView::shownPage() const
{
    const auto shown = std::ranges::find_if(m_views, [this](const auto& each) { return each.second == currentPage(); });
    return shown == m_views.end() ? std::nullopt : std::optional{shown->first};
}

QList<QWidget*> WorkspaceView::panes() const
{
    QList<QWidget*> all;
    if (m_sideBar->focusTarget())
        all.append(m_sideBar);
    if (const auto* page = currentPage())
        all += page->panes();
    all.append(m_status);
    return all;
}
