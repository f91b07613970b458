#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QStackedWidget>

#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Presentation/SignIn/SignInState.h"

class LedgerStore;
class PageRegistry;
class SignInView;
class WorkspaceView;

/// The content of the window: sign-in or workspace, whichever the store's snapshot asks for, and the store's messages.
class RootView final : public QStackedWidget {
    Q_OBJECT
public:
    RootView(LedgerStore& store, const PageRegistry& registry, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    /// F1 shows all keys wherever the focus is, also over a form.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void followApplication(Qt::ApplicationState state);
    void presentScreen();
    /// That of the member who is signed in: the one with their unsaved changes, where that still is there.
    void openWorkspace();
    /// The session is over. Pages with unsaved changes wait for their member, until somebody else signs in.
    void leaveWorkspace();
    void presentMessage();
    void openAlert();
    void alertClosed();
    void showKeys();
    void showSettings();
    void showUnconfirmed();

    LedgerStore& m_store;
    const PageRegistry& m_registry;
    SignInStart m_start; // for the next sign-in
    SignInView* m_signIn = nullptr;
    WorkspaceView* m_workspace = nullptr;
    WorkspaceView* m_asideWorkspace = nullptr; // waits for the member who was signed in last
    QElapsedTimer m_away;                      // since the program was left for another
    /// What the open alert says; it stays until somebody has closed it, whatever the store publishes meanwhile.
    struct Message {
        MessageDialog::Kind kind = MessageDialog::Kind::error;
        QString text;
    };
    Message m_message;
    QPointer<MessageDialog> m_alert;
    QPointer<QDialog> m_keys;
    QPointer<QDialog> m_settings;
    QPointer<QDialog> m_unconfirmed;
};
