#pragma once

#include <string>

#include "LedgerUI/Presentation/Ledger/Rows/LedgerSelection.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

class LedgerBrowser;
class LedgerCommands;
class LedgerDetailPane;
class LedgerFilterRow;
class LedgerGuide;
class LedgerMessages;
class LedgerNoticeView;
class LedgerStore;
class LedgerTable;
class LedgerTotalsStrip;
class ListDetailPage;
class PageHeader;
class PeriodNavigator;
class SplitButton;

/// The ledger page: find entries, look at one closely, record new ones and undo wrong ones.
class LedgerView final : public PageView {
    Q_OBJECT
public:
    explicit LedgerView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;
    [[nodiscard]] StatusContext statusContext() const override;
    void follow(const PageLink& link) override;
    void followDay() override { adoptSnapshot(); }

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildHeader();
    void buildLayout();
    void bindParts();
    void bindDetail();
    void bindDialogs();
    void adoptSnapshot();
    bool openBook();
    void present();
    void presentBook();
    void presentSelection();
    void presentDetail();
    void presentTotals();
    void presentCommands();
    void showNewEntry();
    void presentDue();
    void retranslate();
    void showEntry(const std::string& id);

    LedgerStore& m_store;
    LedgerBrowser* m_browser = nullptr;
    LedgerCommands* m_commands = nullptr;
    PageHeader* m_header = nullptr;
    PeriodNavigator* m_period = nullptr;
    SplitButton* m_newEntry = nullptr;
    LedgerFilterRow* m_filters = nullptr;
    LedgerMessages* m_messages = nullptr;
    ListDetailPage* m_page = nullptr;
    LedgerTable* m_table = nullptr;
    LedgerNoticeView* m_notice = nullptr;
    LedgerTotalsStrip* m_totals = nullptr;
    LedgerDetailPane* m_detail = nullptr;
    LedgerGuide* m_guide = nullptr;
    LedgerSelection m_selection;
};
