#pragma once

#include <map>

#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"
#include "LedgerUI/Presentation/Dividends/DividendBoard.h"
#include "LedgerUI/Presentation/Records/CapitalQuestion.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

class ActionSet;
class CapitalOverviewTab;
class CapitalPageActions;
class ContributionsTab;
class DividendsTab;
class LedgerStore;
class PageHeader;
class PageTabs;
class PeriodNavigator;
class QStackedWidget;
class SegmentedControl;
struct CapitalPlace;

/// The page of owners' capital and dividends, one currency at a time.
class CapitalView final : public PageView {
    Q_OBJECT
public:
    explicit CapitalView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;
    [[nodiscard]] StatusContext statusContext() const override;
    void follow(const PageLink& link) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void bind();
    void adoptSnapshot();
    void presentTabs();
    void presentCurrencies();
    void present();
    void presentTab();
    void presentOverview();
    void presentContributions();
    void presentContribution();
    void presentDividends();
    void presentActions();
    void presentPrinting();
    void showSettlement(const QString& participantID);
    void showEntry(const QString& id);
    void showContents();
    void showUnavailable(const QString& why);
    void showInstead(const QString& what, const QString& why);
    void goTo(const CapitalPlace& place);
    template <class Contents>
    Contents* addPlace(CapitalModuleTab tab);
    void placeActions();
    void chooseCurrency(const std::string& currency);
    void choosePeriod(const Period& period);
    [[nodiscard]] CapitalModuleTab tab() const;

    LedgerStore& m_store;
    CapitalQuestion m_question;
    DividendChoice m_wanted; // what the person chose; else the newest allocation is shown
    DividendChoice m_choice; // what is shown
    std::vector<CapitalModuleTab> m_tabs;
    std::vector<std::string> m_currencies;
    bool m_isOpened = false; // the period was set once
    PageHeader* m_header = nullptr;
    PeriodNavigator* m_period = nullptr;
    SegmentedControl* m_currency = nullptr;
    PageTabs* m_tabRow = nullptr;
    CapitalPageActions* m_actions = nullptr;
    ActionSet* m_printing = nullptr;
    CapitalOverviewTab* m_overview = nullptr;
    ContributionsTab* m_contributions = nullptr;
    DividendsTab* m_dividends = nullptr;
    std::map<CapitalModuleTab, QStackedWidget*> m_places; // of each tab: its contents, or why there are none
};
