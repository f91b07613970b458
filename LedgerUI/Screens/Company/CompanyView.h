#pragma once

#include <map>

#include "LedgerUI/Screens/Workspace/PageView.h"

class ActionSet;
class CompanyTab;
class LedgerStore;
class PageHeader;
class PageTabs;
class PrimaryButton;

/// The company: its members, invitations, settings and profile, each on a tab of its own. Who does not manage it sees
/// its profile and their own rights.
class CompanyView final : public PageView {
    Q_OBJECT
public:
    explicit CompanyView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;
    [[nodiscard]] StatusContext statusContext() const override;
    void follow(const PageLink& link) override;
    void adoptInvitations(const std::vector<PendingInvitation>& invitations) override;
    [[nodiscard]] std::size_t unsavedChanges() const override;
    void discardChanges() override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void presentTabs();
    void presentActions();
    CompanyTab* make(const QString& id);
    [[nodiscard]] CompanyTab* current() const;

    LedgerStore& m_store;
    ActionSet* m_actions = nullptr;
    PageHeader* m_header = nullptr;
    PrimaryButton* m_primary = nullptr;
    QString m_primaryAction;
    PageTabs* m_tabs = nullptr;
    std::map<QString, CompanyTab*> m_made;
    std::map<QString, bool> m_offered; // the secondary actions that the header knows
};
