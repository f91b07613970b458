#include "LedgerUI/Screens/Capital/CapitalTabs.h"

#include <algorithm>

#include <QStackedWidget>
#include <QTabBar>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/PageTabs.h"
#include "LedgerUI/Components/Page/PlainRows.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Records/CapitalSections.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Capital/CapitalOverviewTab.h"
#include "LedgerUI/Screens/Capital/ContributionsTab.h"
#include "LedgerUI/Screens/Dividends/DividendsTab.h"
#include "LedgerUI/Screens/Records/RecordInks.h"

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

}

CapitalTabs::CapitalTabs(LedgerStore& store, QWidget* parent) : QWidget{parent}, m_store{store}
{
    m_tabRow = new PageTabs(QStringLiteral("capitalTabs"), this);
    m_overview = addPlace<CapitalOverviewTab>(CapitalModuleTab::overview);
    m_contributions = addPlace<ContributionsTab>(CapitalModuleTab::contributions);
    m_dividends = addPlace<DividendsTab>(CapitalModuleTab::dividends);
    plainRows(this)->addWidget(m_tabRow);
    connect(m_tabRow, &PageTabs::chosenChanged, this, &CapitalTabs::chosenChanged);
}

template <class Contents>
Contents* CapitalTabs::addPlace(CapitalModuleTab tab)
{
    auto* place = new QStackedWidget(m_tabRow->place());
    place->setMinimumSize(1, 1); // texts of tabs that were never shown would want more height than the window has
    auto* unavailable = new EmptyState(QStringLiteral("exclamation-triangle"), place);
    unavailable->setObjectName(QStringLiteral("capitalUnavailable"));
    auto* contents = new Contents(place);
    place->addWidget(contents);
    place->addWidget(unavailable);
    m_places[tab] = place;
    m_tabRow->setContents(idOf(tab), place);
    return contents;
}

QList<QWidget*> CapitalTabs::panes() const
{
    QList<QWidget*> all;
    if (!isWhole())
        all.clear(); // nothing of the contents can be seen
    else if (chosen() == CapitalModuleTab::overview)
        all = m_overview->panes();
    else if (chosen() == CapitalModuleTab::contributions)
        all = m_contributions->panes();
    else
        all = m_dividends->panes();
    all << &m_tabRow->row();
    return all;
}

void CapitalTabs::presentTabs()
{
    m_tabs = FinancialFeaturePolicy::activeTabs(*m_store.snapshot());
    std::vector<PageTabs::Tab> shown;
    shown.reserve(m_tabs.size());
    for (const auto each : m_tabs)
        shown.push_back({.id = idOf(each), .text = text(wordOf(each))});
    m_tabRow->present(shown);
    m_tabRow->setName(word(workspaceWords(), "dividends"));
}

void CapitalTabs::present(const CapitalQuestion& question, const DividendChoice& wanted)
{
    if (CapitalSections::isSeen(chosen(), *m_store.snapshot()))
        presentTab(question, wanted);
    else
        showInstead(text("notSeen"), text("notSeen.body"));
}

void CapitalTabs::presentTab(const CapitalQuestion& question, const DividendChoice& wanted)
{
    switch (chosen()) {
    case CapitalModuleTab::overview:
        return presentOverview(question);
    case CapitalModuleTab::contributions:
        return presentContributions(question);
    case CapitalModuleTab::dividends:
        return presentDividends(question, wanted);
    }
}

void CapitalTabs::presentOverview(const CapitalQuestion& question)
{
    const auto snapshot = m_store.snapshot();
    const auto shown = CapitalOverviews::overview(*snapshot, question, m_store.today(), InterfaceLanguage::tag());
    if (!shown) {
        const bool isCapital = shown.error() == CapitalOverviews::Unavailable::capital;
        return showUnavailable(isCapital ? refusalText(CapitalRefusal::integrity, InterfaceLanguage::tag())
                                         : refusalText(DividendRefusal::integrity, InterfaceLanguage::tag()));
    }
    m_overview->present(*shown, RecordInks{*snapshot});
    showContents();
}

void CapitalTabs::presentContributions(const CapitalQuestion& question)
{
    const auto snapshot = m_store.snapshot();
    const auto shown = ContributionLists::list(*snapshot, question, InterfaceLanguage::tag());
    if (!shown)
        return showUnavailable(refusalText(CapitalRefusal::integrity, InterfaceLanguage::tag()));
    m_contributions->present(*shown, RecordInks{*snapshot});
    showContents();
    presentContribution();
}

void CapitalTabs::presentContribution()
{
    const auto snapshot = m_store.snapshot();
    if (snapshot)
        m_contributions->presentDetail(
            ContributionLists::detail(*snapshot, m_contributions->chosen(), m_store.today(), InterfaceLanguage::tag()),
            RecordInks{*snapshot});
}

void CapitalTabs::presentDividends(const CapitalQuestion& question, const DividendChoice& wanted)
{
    const auto snapshot = m_store.snapshot();
    const auto shown = DividendBoards::board(*snapshot, question, wanted, InterfaceLanguage::tag());
    if (!shown)
        return showUnavailable(refusalText(DividendRefusal::integrity, InterfaceLanguage::tag()));
    m_choice = shown->choice;
    m_dividends->present(*shown, RecordInks{*snapshot});
    showContents();
}

/// Never a part of the figures where the whole does not verify.
void CapitalTabs::showUnavailable(const QString& why)
{
    showInstead(text("unavailable"), why);
}

void CapitalTabs::showInstead(const QString& what, const QString& why)
{
    auto* place = m_places.at(chosen());
    static_cast<EmptyState*>(place->widget(1))->setTexts(what, why);
    place->setCurrentIndex(1);
}

void CapitalTabs::showContents()
{
    m_places.at(chosen())->setCurrentIndex(0);
}

void CapitalTabs::choose(CapitalModuleTab tab)
{
    m_tabRow->choose(idOf(tab));
}

CapitalModuleTab CapitalTabs::chosen() const
{
    for (const auto each : m_tabs) {
        if (idOf(each) == m_tabRow->chosen())
            return each;
    }
    return CapitalModuleTab::overview;
}

bool CapitalTabs::has(CapitalModuleTab tab) const
{
    return std::ranges::find(m_tabs, tab) != m_tabs.end();
}

bool CapitalTabs::isWhole() const
{
    return m_places.at(chosen())->currentIndex() == 0;
}
