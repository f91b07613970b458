#pragma once

#include <string>

#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Ledger/LedgerFilter.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

class LedgerBrowser;
class LedgerDetailPane;
class LedgerFilterRow;
class LedgerNoticeView;
class LedgerStore;
class LedgerTable;
class LedgerTotalsStrip;
class NewEntryButton;
class PageHeader;
class PeriodNavigator;
class QSplitter;
class QStackedWidget;
class TextLabel;
struct TransactionDraft;

/// The ledger page: find entries, look at one closely, record new ones and undo wrong ones.
class LedgerView final : public PageView {
    Q_OBJECT
public:
    explicit LedgerView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;
    [[nodiscard]] StatusContext statusContext() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Pane { hidden, beside, over }; // where the detail stands

    void buildLayout();
    void bindParts();
    void bindKeys();
    void adoptSnapshot();
    void present();
    void presentDetail();
    void retranslate();

    void setPane(Pane pane);
    void toggleDetail();
    void openDetail();
    void closeDetail();
    void leaveDetail();
    void placeOverlay();
    [[nodiscard]] bool isNarrow() const;

    void wantFilter(const LedgerFilter& filter);
    void showOnlyAccount(const std::string& accountID);
    void showEntry(const std::string& id);
    void openContextMenu(QPoint at);
    void record(const std::string& kind);
    void correct(const TransactionDraft& draft);
    void openForm(const EntryForm::Opening& opening);
    void awaitEntry(const std::string& id);
    void reverse(const std::string& id);

    LedgerStore& m_store;
    LedgerBrowser* m_browser = nullptr;
    PageHeader* m_header = nullptr;
    PeriodNavigator* m_period = nullptr;
    NewEntryButton* m_newEntry = nullptr;
    LedgerFilterRow* m_filters = nullptr;
    TextLabel* m_hint = nullptr;
    QSplitter* m_splitter = nullptr;
    QWidget* m_list = nullptr;
    QStackedWidget* m_stack = nullptr;
    LedgerTable* m_table = nullptr;
    LedgerNoticeView* m_notice = nullptr;
    LedgerTotalsStrip* m_totals = nullptr;
    LedgerDetailPane* m_detail = nullptr;
    Pane m_pane = Pane::beside;
    bool m_wasNarrow = false;
    bool m_hasEntries = true; // else there is nothing to filter or to look at closely
    std::string m_awaited;    // an entry to show once a refresh brings it
};
