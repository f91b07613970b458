#include "LedgerUI/Screens/Ledger/LedgerView.h"

#include <utility>

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/TransactionDraft.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Ledger/LedgerBrowser.h"
#include "LedgerUI/Presentation/Ledger/LedgerNotice.h"
#include "LedgerUI/Presentation/Ledger/LedgerTableModel.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Screens/Entry/ReversalDialog.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Screens/Ledger/LedgerDetailPane.h"
#include "LedgerUI/Screens/Ledger/LedgerFilterRow.h"
#include "LedgerUI/Screens/Ledger/LedgerNoticeView.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"
#include "LedgerUI/Screens/Ledger/LedgerTotalsStrip.h"
#include "LedgerUI/Screens/Ledger/NewEntryButton.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

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

}

LedgerView::LedgerView(LedgerStore& store, QWidget* parent) : PageView{parent}, m_store{store}
{
    setObjectName(QStringLiteral("ledgerView"));
    m_browser = new LedgerBrowser(this);
    buildLayout();
    bindParts();
    bindKeys();
    retranslate();
    setPane(Pane::beside);
    adoptSnapshot();
}

void LedgerView::buildLayout()
{
    m_header = new PageHeader(this);
    m_period = new PeriodNavigator(m_header);
    m_newEntry = new NewEntryButton(m_store, this);
    m_header->setMiddle(m_period);
    m_header->setPrimary(m_newEntry);
    m_filters = new LedgerFilterRow(this);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setObjectName(QStringLiteral("periodHint"));
    m_hint->setContentsMargins(Space::pageMargin, Space::step1, Space::pageMargin, Space::step1);
    m_hint->setWordWrap(true);

    m_list = new QWidget(this);
    m_stack = new QStackedWidget(m_list);
    m_table = new LedgerTable(m_stack);
    m_notice = new LedgerNoticeView(m_stack);
    m_stack->addWidget(m_table);
    m_stack->addWidget(m_notice);
    m_totals = new LedgerTotalsStrip(m_list);
    auto* column = new QVBoxLayout(m_list);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_stack, 1);
    column->addWidget(m_totals);

    m_splitter = new QSplitter(Qt::Horizontal, this);
    m_splitter->setObjectName(QStringLiteral("ledgerSplitter"));
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(1);
    m_detail = new LedgerDetailPane(m_splitter);
    m_splitter->addWidget(m_list);
    m_splitter->addWidget(m_detail);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setSizes({10000, Space::detailPane});
    m_stack->installEventFilter(this);

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_header);
    rows->addWidget(m_filters);
    rows->addWidget(m_hint);
    rows->addWidget(m_splitter, 1);
}

void LedgerView::bindParts()
{
    connect(&m_store, &LedgerStore::snapshotChanged, this, &LedgerView::adoptSnapshot);
    connect(&m_store, &LedgerStore::isBusyChanged, this, [this] {
        m_newEntry->present();
        presentDetail();
    });
    connect(m_browser, &LedgerBrowser::changed, this, &LedgerView::present);
    connect(m_period, &PeriodNavigator::periodChosen, this, [this](const Period& period) {
        auto filter = m_browser->filter();
        filter.period = period;
        wantFilter(filter);
    });
    connect(m_newEntry, &NewEntryButton::kindWanted, this, &LedgerView::record);
    connect(m_filters, &LedgerFilterRow::filterWanted, this, &LedgerView::wantFilter);
    connect(m_filters, &LedgerFilterRow::detailToggled, this, &LedgerView::toggleDetail);
    connect(m_filters, &LedgerFilterRow::leftDownwards, this, [this] {
        if (m_stack->currentWidget() != m_table)
            return;
        if (!m_table->currentIndex().isValid())
            m_table->selectRow(0);
        m_table->setFocus();
    });
    connect(m_filters, &LedgerFilterRow::leftByEscape, this, &LedgerView::leaveDetail);
    connect(m_notice, &LedgerNoticeView::filterWanted, this, &LedgerView::wantFilter);
    connect(m_notice, &LedgerNoticeView::recordWanted, this, [this] { m_newEntry->begin(); });
    connect(m_notice, &LedgerNoticeView::openingWanted, this, [this] { record(std::string{EntryKind::opening}); });
    connect(m_table, &LedgerTable::selectionMoved, this, &LedgerView::presentDetail);
    connect(m_table, &LedgerTable::sortWanted, m_browser, &LedgerBrowser::setSort);
    connect(m_table, &LedgerTable::opened, this, &LedgerView::openDetail);
    connect(m_table, &QWidget::customContextMenuRequested, this, &LedgerView::openContextMenu);
    connect(m_detail, &LedgerDetailPane::closeWanted, this, &LedgerView::closeDetail);
    connect(m_detail, &LedgerDetailPane::left, this, &LedgerView::leaveDetail);
    connect(m_detail, &LedgerDetailPane::reversalWanted, this,
            [this](const QString& id) { reverse(id.toStdString()); });
    connect(m_detail, &LedgerDetailPane::entryWanted, this, [this](const QString& id) { showEntry(id.toStdString()); });
    connect(m_detail, &LedgerDetailPane::accountWanted, this,
            [this](const QString& id) { showOnlyAccount(id.toStdString()); });
}

void LedgerView::bindKeys()
{
    const auto bind = [this](Command command, auto action) {
        for (const auto& keys : KeyBindings::keys(command))
            connect(new QShortcut(keys, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut), &QShortcut::activated,
                    this, action);
    };
    bind(Command::search, [this] { m_filters->focusSearch(); });
    bind(Command::previousPeriod, [this] { m_period->goBack(); });
    bind(Command::nextPeriod, [this] { m_period->goForward(); });
    bind(Command::openPeriod, [this] {
        if (!m_filters->openFocusedMenu())
            m_period->openPopover();
    });
    bind(Command::toggleDetail, [this] { toggleDetail(); });
}

QList<QWidget*> LedgerView::panes() const
{
    auto* content = m_stack->currentWidget() == m_table ? static_cast<QWidget*>(m_table) : m_notice;
    QList<QWidget*> all{content, m_header, m_filters};
    if (m_detail->isVisibleTo(this))
        all.append(m_detail);
    return all;
}

PageView::StatusContext LedgerView::statusContext() const
{
    const auto selected = m_table->selectedEntries();
    if (selected.empty() || !m_browser->book())
        return {};
    // The status bar must never keep the window from shrinking: the pane has every sum.
    const qsizetype shown = isNarrow() ? 2 : 4;
    QStringList figures;
    for (const auto& amount : netAmounts(totals(*m_browser->book(), selected)))
        figures << amount.text();
    const auto left = figures.size() - shown;
    if (left > 0)
        figures = figures.first(shown) << QStringLiteral("+%1").arg(left);
    return {countedIn(InterfaceLanguage::tag(), ledgerWords(), "selected", selected.size()),
            figures.join(QStringLiteral("   "))};
}

void LedgerView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        adoptSnapshot();
    }
    PageView::changeEvent(event);
}

void LedgerView::resizeEvent(QResizeEvent* event)
{
    PageView::resizeEvent(event);
    const bool narrow = isNarrow();
    m_filters->setFolded(narrow);
    if (narrow != m_wasNarrow)
        setPane(narrow ? Pane::hidden : Pane::beside);
    m_wasNarrow = narrow;
    placeOverlay();
}

bool LedgerView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_stack && event->type() == QEvent::Resize)
        placeOverlay();
    return PageView::eventFilter(watched, event);
}

void LedgerView::adoptSnapshot()
{
    const auto today = LedgerDay::parse(m_store.today());
    m_newEntry->present();
    m_browser->open(m_store.snapshot(), InterfaceLanguage::tag(),
                    today.value_or(std::chrono::year{1970} / std::chrono::January / 1));
}

void LedgerView::present()
{
    m_period->present(m_browser->filter().period, m_browser->counts(), m_browser->today());
    m_filters->present(*m_browser);
    if (const auto& book = m_browser->book()) {
        const bool isEmpty = m_browser->rows().empty();
        m_table->present(*m_browser);
        if (isEmpty)
            m_notice->present(noticeFor(*book, m_browser->filter(), m_browser->counts(), m_browser->today()));
        m_stack->setCurrentWidget(isEmpty ? static_cast<QWidget*>(m_notice) : m_table);
        m_totals->present(m_browser->rows().size(), m_browser->totals());
        m_totals->setVisible(!isEmpty);
        m_hasEntries = book->size() > 0;
        m_filters->setVisible(m_hasEntries);
        m_detail->setVisible(m_hasEntries && m_pane != Pane::hidden);
    } else if (m_browser->isPreparing()) {
        m_notice->presentWaiting(text("preparing"));
        m_stack->setCurrentWidget(m_notice);
        m_totals->hide();
    }
    const auto shown = periodLabel(m_browser->filter().period, InterfaceLanguage::tag()).toStdString();
    m_hint->setText(word(ledgerWords(), "latestShown", {shown}));
    m_hint->setVisible(m_browser->showsLatestInstead());
    if (!m_awaited.empty() && !m_browser->isPreparing()) {
        const auto awaited = std::exchange(m_awaited, {});
        showEntry(awaited);
    }
}

void LedgerView::presentDetail()
{
    Q_EMIT statusContextChanged();
    const auto& book = m_browser->book();
    if (!book)
        return;
    const auto selected = m_table->selectedEntries();
    if (selected.empty()) {
        m_detail->presentBalances(balancesOn(*book, balanceDay(*book, m_browser->filter().period, m_browser->today())));
    } else if (selected.size() == 1) {
        const auto detail = detailOf(*book, selected.front());
        m_detail->presentEntry(detail, entryKindColor(detail.kind, book->snapshot()), m_store.isBusy());
    } else {
        m_detail->presentSelection(countedIn(InterfaceLanguage::tag(), ledgerWords(), "selected", selected.size()),
                                   netAmounts(totals(*book, selected)));
    }
}

void LedgerView::retranslate()
{
    m_header->setTitle(text("title"));
    m_filters->retranslate();
    m_table->retranslate(InterfaceLanguage::tag());
    m_totals->retranslate();
    m_detail->retranslate();
}

bool LedgerView::isNarrow() const
{
    return window()->width() < Space::foldBelow;
}

void LedgerView::setPane(Pane pane)
{
    const bool hadFocus = m_detail->isAncestorOf(focusWidget());
    m_pane = pane;
    if (pane == Pane::over && m_detail->parentWidget() != this) {
        m_detail->setParent(this);
    } else if (pane == Pane::beside && m_detail->parentWidget() != m_splitter) {
        m_splitter->addWidget(m_detail);
        m_splitter->setSizes({10000, Space::detailPane});
    }
    setStyleProperty(m_detail, "over", pane == Pane::over);
    m_detail->setVisible(m_hasEntries && pane != Pane::hidden);
    m_filters->setDetailShown(pane != Pane::hidden);
    placeOverlay();
    if (pane == Pane::hidden && hadFocus)
        panes().front()->setFocus();
}

void LedgerView::toggleDetail()
{
    if (!m_hasEntries)
        return;
    setPane(m_pane != Pane::hidden ? Pane::hidden : isNarrow() ? Pane::over : Pane::beside);
}

void LedgerView::openDetail()
{
    if (m_pane == Pane::hidden)
        toggleDetail();
    m_detail->firstStop()->setFocus(Qt::OtherFocusReason);
}

void LedgerView::closeDetail()
{
    setPane(Pane::hidden);
    panes().front()->setFocus();
}

/// Beside the table the pane stays; over it, it makes room.
void LedgerView::leaveDetail()
{
    if (m_pane == Pane::over)
        closeDetail();
    else
        panes().front()->setFocus();
}

void LedgerView::placeOverlay()
{
    if (m_pane != Pane::over)
        return;
    // The totals stay in sight, for their figures would be cut.
    const QRect area{m_stack->mapTo(this, QPoint{}), m_stack->size()};
    m_detail->setGeometry(area.right() + 1 - Space::detailPane, area.top(), Space::detailPane, area.height());
    m_detail->raise();
}

void LedgerView::wantFilter(const LedgerFilter& filter)
{
    const bool hadFocus = m_notice->isAncestorOf(focusWidget());
    m_browser->setFilter(filter);
    if (hadFocus)
        panes().front()->setFocus();
}

void LedgerView::showOnlyAccount(const std::string& accountID)
{
    auto filter = m_browser->filter();
    filter.accountIDs = {accountID};
    wantFilter(filter);
}

void LedgerView::showEntry(const std::string& id)
{
    if (m_browser->reveal(id))
        m_table->select(id);
}

void LedgerView::openContextMenu(QPoint at)
{
    const auto& book = m_browser->book();
    const auto selected = m_table->selectedEntries();
    if (!book || selected.empty())
        return;
    auto* menu = new QMenu(m_table);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (selected.size() == 1) {
        const auto id = book->transaction(selected.front()).id;
        const auto detail = detailOf(*book, selected.front());
        connect(menu->addAction(text("action.open")), &QAction::triggered, this, &LedgerView::openDetail);
        if (detail.offersReversal) {
            auto* reversal =
                menu->addAction(Icon::of(QStringLiteral("arrow-counterclockwise"), Token::text2), text("reverse"));
            reversal->setEnabled(!m_store.isBusy());
            connect(reversal, &QAction::triggered, this, [this, id] { reverse(id); });
        }
        if (const auto* leg = leadingLeg(*book, selected.front())) {
            const auto account = book->accounts().id(leg->account);
            auto* only = menu->addAction(word(ledgerWords(), "action.onlyAccount", {book->names().account(account)}));
            connect(only, &QAction::triggered, this, [this, account] { showOnlyAccount(account); });
        }
        menu->addSeparator();
    }
    auto* copy = menu->addAction(text("action.copy"));
    copy->setShortcut(QKeySequence::Copy);
    connect(copy, &QAction::triggered, m_table, &LedgerTable::copySelection);
    menu->popup(m_table->viewport()->mapToGlobal(at));
}

void LedgerView::record(const std::string& kind)
{
    openForm({.kind = kind, .accountID = {}, .prefilled = {}});
}

void LedgerView::correct(const TransactionDraft& draft)
{
    openForm({.kind = draft.kind, .accountID = {}, .prefilled = draft});
}

void LedgerView::openForm(const EntryForm::Opening& opening)
{
    auto* form = new TransactionForm(m_store, opening, window());
    connect(form, &TransactionForm::recorded, this, [this](const QString& id) { awaitEntry(id.toStdString()); });
    form->open();
}

/// A large ledger is made ready after its snapshot came: the entry is shown as soon as it is there.
void LedgerView::awaitEntry(const std::string& id)
{
    if (m_browser->isPreparing())
        m_awaited = id;
    else
        showEntry(id);
}

void LedgerView::reverse(const std::string& id)
{
    const auto& book = m_browser->book();
    const auto at = book ? book->find(id) : LedgerBook::none;
    if (at == LedgerBook::none)
        return;
    auto* dialog = new ReversalDialog(m_store, book->transaction(at), window());
    connect(dialog, &ReversalDialog::correctionRequested, this, &LedgerView::correct);
    connect(dialog, &ReversalDialog::reversed, this,
            [this](const QString& original) { awaitEntry(original.toStdString()); });
    dialog->open();
}
