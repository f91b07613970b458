#pragma once

#include <map>
#include <vector>

#include <QWidget>

#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"
#include "LedgerUI/Presentation/Dividends/DividendBoard.h"
#include "LedgerUI/Presentation/Records/CapitalQuestion.h"

class CapitalOverviewTab;
class ContributionsTab;
class DividendsTab;
class LedgerStore;
class PageTabs;
class QStackedWidget;

/// The tabs of capital and dividends that the company has, each with its contents or why there are none.
class CapitalTabs final : public QWidget {
    Q_OBJECT
public:
    explicit CapitalTabs(LedgerStore& store, QWidget* parent = nullptr);

    void presentTabs();
    /// What the chosen tab answers; `wanted` is looked for among the dividends.
    void present(const CapitalQuestion& question, const DividendChoice& wanted);
    void presentContribution();

    void choose(CapitalModuleTab tab);
    [[nodiscard]] CapitalModuleTab chosen() const;
    [[nodiscard]] bool has(CapitalModuleTab tab) const;
    [[nodiscard]] bool isEmpty() const { return m_tabs.empty(); }
    /// Whether the contents of the chosen tab are in sight.
    [[nodiscard]] bool isWhole() const;
    /// What the tab of dividends shows.
    [[nodiscard]] const DividendChoice& choice() const { return m_choice; }
    [[nodiscard]] QList<QWidget*> panes() const;

    [[nodiscard]] CapitalOverviewTab& overview() const { return *m_overview; }
    [[nodiscard]] ContributionsTab& contributions() const { return *m_contributions; }
    [[nodiscard]] DividendsTab& dividends() const { return *m_dividends; }

Q_SIGNALS:
    void chosenChanged();

private:
    template <class Contents>
    Contents* addPlace(CapitalModuleTab tab);
    void presentTab(const CapitalQuestion& question, const DividendChoice& wanted);
    void presentOverview(const CapitalQuestion& question);
    void presentContributions(const CapitalQuestion& question);
    void presentDividends(const CapitalQuestion& question, const DividendChoice& wanted);
    void showContents();
    void showUnavailable(const QString& why);
    void showInstead(const QString& what, const QString& why);

    LedgerStore& m_store;
    std::vector<CapitalModuleTab> m_tabs;
    DividendChoice m_choice;
    PageTabs* m_tabRow = nullptr;
    CapitalOverviewTab* m_overview = nullptr;
    ContributionsTab* m_contributions = nullptr;
    DividendsTab* m_dividends = nullptr;
    std::map<CapitalModuleTab, QStackedWidget*> m_places; // of each tab: its contents, or why there are none
};
