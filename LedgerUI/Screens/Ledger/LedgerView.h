#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QPointer>

#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Ledger/LedgerEntryDetail.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

class ActionSet;
class EntryDayPopover;
class LedgerBrowser;
class LedgerDetailPane;
class LedgerDialogs;
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
struct Action;

/// The ledger page: find entries, look at one closely, record new ones and undo wrong ones.
class LedgerView final : public PageView {
    Q_OBJECT
public:
    explicit LedgerView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;
    [[nodiscard]] StatusContext statusContext() const override;
    void follow(const PageLink& link) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void bindParts();
    void bindDetail();
    void bindDialogs();
    void adoptSnapshot();
    void present();
    void presentSelection();
    void presentDetail();
    void presentActions();
    void presentTemplates();
    [[nodiscard]] std::function<void(const std::string& entryID)> templateKeeper();
    void presentRowActions();
    void presentColumns();
    [[nodiscard]] std::vector<Action> pageActions();
    void openMenu(QPoint place);
    void retranslate();

    void showOnlyAccount(const std::string& accountID);
    void showEntry(const std::string& id);
    void openDays();
    void record(EntryForm::Opening opening);

    LedgerStore& m_store;
    LedgerBrowser* m_browser = nullptr;
    ActionSet* m_actions = nullptr;
    LedgerDialogs* m_dialogs = nullptr;
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
    QPointer<EntryDayPopover> m_days;          // made when it is first wanted
    std::vector<std::uint32_t> m_selected;     // entries of the book shown
    std::vector<LedgerTotal> m_sums;           // of those
    std::optional<LedgerEntryDetail> m_chosen; // where it is a single one
};
