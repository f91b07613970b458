#pragma once

#include <string>

#include <QPointer>
#include <QStackedWidget>

#include "LedgerUI/Components/Dialogs/MessageDialog.h"

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

private:
    void presentScreen();
    void presentMessage();
    void openAlert(MessageDialog::Kind kind, const QString& text);
    void alertClosed();

    LedgerStore& m_store;
    const PageRegistry& m_registry;
    std::string m_defaultAddress;
    SignInView* m_signIn = nullptr;
    WorkspaceView* m_workspace = nullptr;
    QPointer<MessageDialog> m_alert;
};
