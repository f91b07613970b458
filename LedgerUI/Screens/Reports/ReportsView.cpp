#include "LedgerUI/Screens/Reports/ReportsView.h"

#include <algorithm>

#include <QClipboard>
#include <QCoro/QCoroTask>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Page/PageTabs.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/Components/Table/ChoiceField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Reports/Output/ReportExport.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportBrowser.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Reports/FundsTab.h"
#include "LedgerUI/Screens/Reports/IncomeTab.h"
#include "LedgerUI/Screens/Reports/MatrixTab.h"
#include "LedgerUI/Screens/Reports/OverviewTab.h"
#include "LedgerUI/Screens/Reports/ReportExportDialog.h"
#include "LedgerUI/Screens/Reports/ReportPrinting.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int accountsWidth = 230;
constexpr int accountsAtLeast = 190;

QString text(std::string_view key)
{
    return word(reportWords(), key);
}

}

ReportsView::ReportsView(LedgerStore& store, QWidget* parent)
    : ReportPage{store, ReportPart::overview, QStringLiteral("reports"), parent}
{
    presentExits();
    buildLayout();
    connect(m_tabs, &PageTabs::chosenChanged, this, &ReportsView::presentTab);
    connect(m_accounts, &ChoiceField::chosenChanged, this, [this] { narrowTo(m_accounts->chosen()); });
    connect(&browser(), &ReportBrowser::changed, this, [this] {
        if (const auto& sheet = browser().sheet(); sheet && sheet->lostAccounts > 0)
            Q_EMIT done(countedIn(InterfaceLanguage::tag(), reportWords(), "accounts.lost", sheet->lostAccounts));
    });
    adoptSnapshot();
}

void ReportsView::buildLayout()
{
    auto* middle = new QWidget(&header());
    m_accounts = new ChoiceField(middle);
    m_accounts->setObjectName(QStringLiteral("reportAccounts"));
    m_accounts->setMinimumWidth(accountsAtLeast);
    m_accounts->setMaximumWidth(accountsWidth);
    auto* row = new QHBoxLayout(middle);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step2);
    row->addWidget(&period());
    row->addWidget(m_accounts);
    header().setMiddle(middle);
    header().addSecondary(actions()[QStringLiteral("exportReport")]);
    header().addSecondary(actions()[QStringLiteral("printReport")]);

    m_stack = new QStackedWidget(this);
    m_tabs = new PageTabs(QStringLiteral("reportTabs"), m_stack);
    m_notice = new EmptyState(QStringLiteral("bar-chart"), m_stack);
    m_notice->setObjectName(QStringLiteral("reportNotice"));
    m_stack->addWidget(m_notice);
    m_stack->addWidget(m_tabs);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(&header());
    rows->addWidget(m_stack, 1);
}

ReportTab* ReportsView::make(ReportPart part)
{
    auto* place = m_tabs->place();
    switch (part) {
    case ReportPart::income:
        return new IncomeTab(place);
    case ReportPart::matrix:
        return new MatrixTab(place);
    case ReportPart::movements:
        return new FundsTab(place);
    case ReportPart::overview:
    case ReportPart::summary:
        break;
    }
    return new OverviewTab([this] { return besideBooks(); }, place);
}

/// Each is made when it is first looked at: all of them at once would hold the window up as the page opens.
ReportTab& ReportsView::tab(ReportPart part)
{
    auto& tab = m_made[part];
    if (!tab) {
        tab = make(part);
        bindTab(tab);
        m_tabs->setContents(qString(ReportParts::idOf(part)), tab);
        FocusChain::insert(&m_tabs->row(), tab);
    }
    return *tab;
}

void ReportsView::bindTab(ReportTab* tab)
{
    connect(tab, &ReportTab::queryWanted, &browser(), qOverload<ReportQuery>(&ReportBrowser::ask));
    connect(tab, &ReportTab::backingWanted, this, [this](const ReportBacking& backing) { showBacking(backing); });
    connect(tab, &ReportTab::entryWanted, this, [this](const QString& entry) { showEntry(entry); });
    connect(tab, &ReportTab::attentionWanted, this, [this](const AttentionItem& item) { lend(item); });
    connect(tab, &ReportTab::tabWanted, m_tabs, &PageTabs::choose);
    connect(tab, &ReportTab::copied, this, [this] { sayCopied(); });
    connect(tab, &ReportTab::wholeCopyWanted, this, &ReportsView::copyWhole);
    connect(tab, &ReportTab::saveWanted, this, &ReportsView::exportReport);
}

QList<QWidget*> ReportsView::panes() const
{
    if (m_stack->currentWidget() != m_tabs)
        return {&header()};
    auto all = m_made.at(part())->panes();
    all.append(&header());
    all.append(&m_tabs->row());
    return all;
}

void ReportsView::narrowTo(const std::set<std::string, std::less<>>& accountIDs)
{
    auto query = browser().query();
    query.accountIDs.reset();
    if (!accountIDs.empty())
        query.accountIDs = accountIDs;
    browser().ask(std::move(query));
}

void ReportsView::present(const ReportSheet* sheet)
{
    header().setTitle(text("title"));
    presentExits();
    if (!sheet) {
        m_notice->setTexts(text("preparing"), {});
        m_stack->setCurrentWidget(m_notice);
        return;
    }
    presentAccounts(*sheet);
    std::vector<PageTabs::Tab> tabs;
    for (const auto each : ReportParts::all) {
        const std::string id{ReportParts::idOf(each)};
        tabs.push_back({.id = qString(id), .text = text("tab." + id)});
    }
    m_tabs->setName(text("tabs"));
    m_tabs->present(tabs);
    if (sheet->failure)
        presentFailure(*sheet->failure);
    else
        presentTab();
}

/// Only the tab in sight is worked out. Until its figures are there it does not show those that it had before.
void ReportsView::presentTab()
{
    const auto sheet = browser().sheet();
    if (!sheet || sheet->failure)
        return;
    const bool isThere = sheet->query.report == part();
    tab(part()).setUpdatesEnabled(isThere);
    presentExits();
    if (!isThere) {
        auto query = browser().query();
        query.report = part();
        browser().ask(std::move(query));
        return;
    }
    tab(part()).present(*sheet, colorsOf(*sheet));
    tab(part()).offerSaving(store().canExport());
    m_stack->setCurrentWidget(m_tabs);
}

ReportPart ReportsView::part() const
{
    if (!m_tabs)
        return ReportPart::overview;
    const auto id = m_tabs->chosen().toStdString();
    const auto found = std::ranges::find(ReportParts::all, id, &ReportParts::idOf);
    return found == ReportParts::all.end() ? ReportPart::overview : *found;
}

void ReportsView::presentExits()
{
    const auto sheet = browser().sheet();
    const bool isReady = sheet && !sheet->failure && sheet->query.report == part();
    actions().present({{.id = QStringLiteral("exportReport"),
                        .text = text("export"),
                        .glyph = QStringLiteral("box-arrow-up"),
                        .keys = KeyBindings::keys(Command::exportRows),
                        .whyNot = isReady ? QString{} : text("preparing"),
                        .isOffered = store().canExport(),
                        .run = [this] { exportReport({}); }},
                       ReportPrinting::action(store(), isReady, [this] { print(); })});
}

void ReportsView::print()
{
    if (auto* dialog = ReportPrinting::open(store(), browser(), part(), window()))
        connect(dialog, &PrintDialog::finished, this, [this](const QString& what) { Q_EMIT done(what); });
}

/// Begins with the table of this name, where one is named.
void ReportsView::exportReport(const QString& tableName)
{
    auto* dialog = new ReportExportDialog(store(), [this] { return browser().sheet(); }, part(), window());
    dialog->choose(tableName);
    connect(dialog, &ReportExportDialog::saved, this, [this](const QString& fileName) {
        Q_EMIT done(word(reportWords(), "export.done", {fileName.toStdString()}));
    });
    dialog->open();
}

void ReportsView::copyWhole(const QString& tableID)
{
    QCoro::connect(ReportExport::spreadsheetText(browser().sheet(), part(), tableID.toStdString()), this,
                   [this](const QString& text) {
                       QGuiApplication::clipboard()->setText(text);
                       sayCopied();
                   });
}

void ReportsView::presentFailure(ReportError failure)
{
    const bool isTooLarge = failure == ReportError::amountOverflow;
    m_notice->setTexts(text("failed"), text(isTooLarge ? "failed.amountOverflow" : "failed.invalidDay"));
    m_stack->setCurrentWidget(m_notice);
}

void ReportsView::presentAccounts(const ReportSheet& sheet)
{
    const auto& chosen = browser().query().accountIDs;
    std::vector<ChoiceList::Choice> choices;
    QString only;
    for (const auto& account : sheet.books->snapshot->accounts) {
        choices.push_back({.id = account.id, .text = QString::fromStdString(account.name)});
        if (chosen && chosen->contains(account.id))
            only = choices.back().text;
    }
    const auto several = countedIn(InterfaceLanguage::tag(), reportWords(), "accounts", chosen ? chosen->size() : 0);
    const auto summary = !chosen ? text("accounts.all") : chosen->size() == 1U ? only : several;
    nameComboBox(*m_accounts, text("accounts"));
    m_accounts->present({.name = text("accounts"),
                         .all = text("accounts.all"),
                         .search = text("accounts.search"),
                         .noMatch = text("accounts.noMatch")},
                        choices, chosen.value_or(ChoiceList::Chosen{}), summary);
}
