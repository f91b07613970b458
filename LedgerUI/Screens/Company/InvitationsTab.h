#pragma once

#include <string>
#include <vector>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerUI/Screens/Company/CompanyTab.h"

class EmptyState;
class PlainTable;
class QPushButton;
class QStackedWidget;
class TextLabel;

/// The invitations that nobody has accepted yet. They are no part of the snapshot: the tab loads them when it is made
/// and shown, and again whenever the books were refreshed while it is shown.
class InvitationsTab final : public CompanyTab {
    Q_OBJECT
public:
    explicit InvitationsTab(LedgerStore& store, QWidget* parent = nullptr);

    void adopt(std::vector<PendingInvitation> invitations);

    [[nodiscard]] std::vector<Action> actions() override;
    [[nodiscard]] PageView::StatusContext statusContext() const override;
    [[nodiscard]] int count() const override { return static_cast<int>(m_pending.size()); }
    [[nodiscard]] QList<QWidget*> panes() const override;

protected:
    void present() override;
    void showEvent(QShowEvent* event) override;

private:
    void buildLayout();
    void bind();
    /// Loads them once the store is free.
    void reload();
    void load();
    void askToRevoke(const std::string& id);
    void revoke(const PendingInvitation& invitation);

    std::vector<PendingInvitation> m_pending;
    bool m_isWanted = false; // a reload waits for the store
    bool m_isUnread = false; // the last reload failed
    QStackedWidget* m_stack = nullptr;
    QWidget* m_list = nullptr;
    PlainTable* m_table = nullptr;
    TextLabel* m_hint = nullptr;
    EmptyState* m_none = nullptr;
    QPushButton* m_again = nullptr;
};
