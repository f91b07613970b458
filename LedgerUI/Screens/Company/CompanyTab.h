#pragma once

#include <vector>

#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

class LedgerStore;

/// One tab of the company page. It observes the store by itself, from when it is made until the session ends.
class CompanyTab : public QWidget {
    Q_OBJECT
public:
    explicit CompanyTab(LedgerStore& store, QWidget* parent);

    /// What the header offers while the tab is chosen; the last one is the main one.
    [[nodiscard]] virtual std::vector<Action> actions() { return {}; }
    [[nodiscard]] virtual PageView::StatusContext statusContext() const { return {}; }
    /// What stands beside the tab's name; 0 for nothing.
    [[nodiscard]] virtual int count() const { return 0; }
    /// Where the focus goes, pane by pane.
    [[nodiscard]] virtual QList<QWidget*> panes() const = 0;

    /// How much a person changed here that is not saved, and giving it up.
    [[nodiscard]] virtual std::size_t unsavedChanges() const { return 0; }
    virtual void discardChanges() {}

Q_SIGNALS:
    /// Actions, status or count are others.
    void standingChanged();
    void done(const QString& sentence);
    void linkPressed(const PageLink& link);

protected:
    /// Shows everything as it is now; only called while somebody is signed in.
    virtual void present() = 0;
    [[nodiscard]] LedgerStore& store() const { return m_store; }

    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void presentIfSignedIn();

    LedgerStore& m_store;
};
