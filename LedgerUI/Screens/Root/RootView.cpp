#include "LedgerUI/Screens/Root/RootView.h"

#include <utility>

#include <QApplication>
#include <QCoro/QCoroTask>

#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Screens/SignIn/SignInView.h"
#include "LedgerUI/Screens/Workspace/WorkspaceView.h"

namespace {

/// Lets go of a screen whose own signal may still be running.
template <class Screen>
void retire(QStackedWidget& stack, Screen*& screen)
{
    if (!screen)
        return;
    screen->hide();
    stack.removeWidget(screen);
    std::exchange(screen, nullptr)->deleteLater();
}

}

RootView::RootView(LedgerStore& store, const PageRegistry& registry, QWidget* parent)
    : QStackedWidget{parent}, m_store{store}, m_registry{registry}, m_defaultAddress{store.serverURL()}
{
    setObjectName(QStringLiteral("rootView"));
    InterfaceLanguage::change(store.locale());
    connect(&store, &LedgerStore::preferredAppLocaleChanged, this,
            [this] { InterfaceLanguage::change(m_store.locale()); });
    connect(&store, &LedgerStore::snapshotChanged, this, &RootView::presentScreen);
    connect(&store, &LedgerStore::errorMessageChanged, this, &RootView::presentMessage);
    connect(&store, &LedgerStore::noticeMessageChanged, this, &RootView::presentMessage);
    connect(qApp, &QApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive && m_workspace)
            m_workspace->refreshOnReturn();
    });
    presentScreen();
}

void RootView::showEvent(QShowEvent* event)
{
    QStackedWidget::showEvent(event);
    // The store does this once a process; what fails reaches the person through the alert.
    QCoro::connect(m_store.restoreSession(), this, [](const Result<void>&) {});
}

void RootView::presentScreen()
{
    if (m_store.snapshot()) {
        if (m_workspace)
            return;
        retire(*this, m_signIn);
        m_workspace = new WorkspaceView(m_store, m_registry, this);
        setCurrentIndex(addWidget(m_workspace));
    } else {
        if (m_signIn)
            return;
        retire(*this, m_workspace);
        m_signIn = new SignInView(m_store, m_defaultAddress, this);
        setCurrentIndex(addWidget(m_signIn));
    }
}

void RootView::presentMessage()
{
    const auto& error = m_store.errorMessage();
    const auto& message = error ? error : m_store.noticeMessage();
    const auto kind = error ? MessageDialog::Kind::error : MessageDialog::Kind::info;
    if (message && m_alert)
        m_alert->setText(kind, qString(*message));
    else if (message)
        openAlert(kind, qString(*message));
    else if (m_alert)
        m_alert->accept();
}

void RootView::openAlert(MessageDialog::Kind kind, const QString& text)
{
    auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    m_alert = new MessageDialog(kind, text, modal ? modal : window());
    m_alert->setObjectName(QStringLiteral("alertDialog"));
    connect(m_alert, &QDialog::finished, this, &RootView::alertClosed);
    // A form that closes would take the alert with it unread: it opens again over what remains.
    if (modal) {
        connect(modal, &QDialog::finished, m_alert, [this] {
            m_alert->disconnect(this);
            m_alert->hide();
            m_alert->deleteLater();
            m_alert = nullptr;
            QMetaObject::invokeMethod(this, &RootView::presentMessage, Qt::QueuedConnection);
        });
    }
    m_alert->open();
}

void RootView::alertClosed()
{
    m_alert->deleteLater();
    m_alert = nullptr;
    m_store.dismissMessages();
}
