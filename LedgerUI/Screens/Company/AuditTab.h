#pragma once

#include <vector>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/Requests/AuditTrailPage.h"
#include "LedgerUI/Screens/Company/CompanyTab.h"

class DayEdit;
class EmptyState;
class PlainTable;
class QComboBox;
class QPushButton;
class QSplitter;
class QStackedWidget;
class TextLabel;

/// What was done in the company, the latest first, and below it how the chosen record stood before and after. It is
/// loaded when the tab is shown, page by page as the person goes down, and narrowed by the service.
class AuditTab final : public CompanyTab {
    Q_OBJECT
public:
    explicit AuditTab(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] PageView::StatusContext statusContext() const override;
    [[nodiscard]] QList<QWidget*> panes() const override;

protected:
    void present() override;
    void showEvent(QShowEvent* event) override;

private:
    void buildLayout();
    QWidget* buildFilters();
    QWidget* buildList();
    QWidget* buildDetail();
    void bind();
    /// Forgets what is shown and asks from the last record on.
    void ask(AuditQuestion question);
    void wantMore();
    void load();
    void take(const AuditQuestion& question, const Result<AuditTrailPage>& loaded);
    [[nodiscard]] const AuditTrailRecord* chosen() const;
    [[nodiscard]] bool isFiltered() const;
    void presentFilters();
    void presentList();
    void presentDetail();

    AuditQuestion m_question; // `below` is where the next page begins
    std::vector<AuditTrailRecord> m_records;
    bool m_isWanted = false; // a page waits for the store
    bool m_isUnread = false; // the last page could not be loaded
    bool m_hasMore = true;
    QWidget* m_filters = nullptr;
    QComboBox* m_person = nullptr;
    QComboBox* m_kind = nullptr;
    TextLabel* m_dayLabel = nullptr;
    DayEdit* m_day = nullptr;
    QPushButton* m_clear = nullptr;
    QSplitter* m_splitter = nullptr;
    PlainTable* m_table = nullptr;
    TextLabel* m_hint = nullptr;
    QPushButton* m_more = nullptr;
    QWidget* m_detail = nullptr;
    TextLabel* m_headline = nullptr;
    QPushButton* m_inLedger = nullptr; // shows the chosen record where it is an entry that the member sees
    QPushButton* m_only = nullptr;
    QStackedWidget* m_changesOrNot = nullptr;
    PlainTable* m_changes = nullptr;
    TextLabel* m_noChanges = nullptr;
    QStackedWidget* m_stack = nullptr;
    EmptyState* m_none = nullptr;
    QPushButton* m_again = nullptr;
};
