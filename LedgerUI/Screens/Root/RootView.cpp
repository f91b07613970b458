#include "LedgerUI/Screens/Root/RootView.h"

#include <utility>

#include <QApplication>
#include <QCoro/QCoroTask>
#include <QKeyEvent>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/EnterKey.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Screens/Requests/UnconfirmedDialog.h"
#include "LedgerUI/Screens/Root/KeysDialog.h"
#include "LedgerUI/Screens/Settings/SettingsDialog.h"
#include "LedgerUI/Screens/SignIn/SignInView.h"
#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"
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
    : QStackedWidget{parent}, m_store{store}, m_registry{registry}, m_start{.defaultAddress = store.serverURL()}
{
    setObjectName(QStringLiteral("rootView"));
    InterfaceLanguage::change(store.locale());
    connect(&store, &LedgerStore::preferredAppLocaleChanged, this,
            [this] { InterfaceLanguage::change(m_store.locale()); });
    connect(&store, &LedgerStore::snapshotChanged, this, &RootView::presentScreen);
    connect(&store, &LedgerStore::errorMessageChanged, this, &RootView::presentMessage);
    connect(&store, &LedgerStore::noticeMessageChanged, this, &RootView::presentMessage);
    connect(qApp, &QApplication::applicationStateChanged, this, &RootView::followApplication);
    letEnterPressButtons();
    qApp->installEventFilter(this);
    presentScreen();
}

void RootView::showEvent(QShowEvent* event)
{
    QStackedWidget::showEvent(event);
    // The store does this once per process; what fails reaches the person through the alert.
    QCoro::connect(m_store.restoreSession(), this, [](const Result<void>&) {});
}

void RootView::followApplication(Qt::ApplicationState state)
{
    // Some desktops take a window that closes for a moment without any: nobody was away then, and an alert that a
    // refresh has opened must not bring about the next one by being closed.
    constexpr qint64 blink = 250; // milliseconds
    if (state != Qt::ApplicationActive) {
        if (!m_away.isValid())
            m_away.start();
        return;
    }
    const bool hasBlinked = m_away.isValid() && m_away.elapsed() < blink;
    m_away.invalidate();
    if (m_workspace && !hasBlinked)
        m_workspace->refreshOnReturn();
}

bool RootView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && watched->isWidgetType()) {
        const auto pressed = QKeySequence{static_cast<QKeyEvent*>(event)->keyCombination()};
        if (KeyBindings::keys(Command::help).contains(pressed)) {
            showKeys();
            return true;
        }
    }
    return QStackedWidget::eventFilter(watched, event);
}

void RootView::presentScreen()
{
    if (const auto snapshot = m_store.snapshot()) {
        m_start.email = snapshot->currentMember.email;
        if (m_workspace && m_start.member && m_start.member->companyID == snapshot->company.id)
            return;
        // Nothing of one company is seen in another: neither a search nor a place in a list.
        retire(*this, m_workspace);
        retire(*this, m_signIn);
        m_start.wait = SignInWait::signOut;
        openWorkspace();
    } else {
        if (m_signIn)
            return;
        leaveWorkspace();
        m_signIn = new SignInView(m_store, m_start, this);
        setCurrentIndex(addWidget(m_signIn));
    }
}

void RootView::openWorkspace()
{
    const auto member = m_store.signedIn();
    if (m_start.member != member)
        retire(*this, m_asideWorkspace);
    m_start.member = member;
    m_workspace = std::exchange(m_asideWorkspace, nullptr);
    if (!m_workspace) {
        m_workspace = new WorkspaceView(m_store, m_registry, this);
        connect(m_workspace, &WorkspaceView::settingsWanted, this, &RootView::showSettings);
        connect(m_workspace, &WorkspaceView::unconfirmedWanted, this, &RootView::showUnconfirmed);
    }
    setCurrentIndex(addWidget(m_workspace));
}

void RootView::leaveWorkspace()
{
    if (!m_workspace || UnsavedChanges::count(*m_workspace) == 0) {
        retire(*this, m_workspace);
        return;
    }
    m_workspace->hide();
    removeWidget(m_workspace);
    m_asideWorkspace = std::exchange(m_workspace, nullptr);
}

void RootView::presentMessage()
{
    const auto& error = m_store.errorMessage();
    const auto& message = error ? error : m_store.noticeMessage();
    if (!message) {
        // A form that says by itself what failed dismisses the message as soon as it hears of it. An operation that
        // begins clears it as well, but nobody has read it then.
        if (!m_alert && !m_store.isBusy())
            m_message.text.clear();
        return;
    }
    m_message = {.kind = error ? MessageDialog::Kind::error : MessageDialog::Kind::info, .text = qString(*message)};
    if (m_alert) {
        m_alert->setText(m_message.kind, m_message.text);
        return;
    }
    QMetaObject::invokeMethod(this, &RootView::openAlert, Qt::QueuedConnection);
}

void RootView::openAlert()
{
    if (m_alert || m_message.text.isEmpty())
        return;
    auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    m_alert = new MessageDialog(m_message.kind, m_message.text, modal ? modal : window());
    m_alert->setObjectName(QStringLiteral("alertDialog"));
    connect(m_alert, &QDialog::finished, this, &RootView::alertClosed);
    // A form that closes would take the alert with it unread: it opens again over what remains.
    if (modal) {
        const auto reopen = [this, alert = m_alert.data()] {
            if (m_alert != alert)
                return; // it has been opened elsewhere already
            m_alert->disconnect(this);
            m_alert->hide();
            m_alert->deleteLater();
            m_alert = nullptr;
            QMetaObject::invokeMethod(this, &RootView::openAlert, Qt::QueuedConnection);
        };
        connect(modal, &QDialog::finished, m_alert, reopen);
        if (auto* form = qobject_cast<CommandForm*>(modal))
            connect(form, &CommandForm::wentAside, m_alert, reopen);
    }
    m_alert->open();
}

void RootView::alertClosed()
{
    m_alert->deleteLater();
    m_alert = nullptr;
    m_message.text.clear();
    m_store.dismissMessages();
}

void RootView::showKeys()
{
    if (m_keys)
        return;
    auto* const above = QApplication::activeModalWidget();
    m_keys = new KeysDialog(above ? above : window());
    m_keys->open();
}

void RootView::showSettings()
{
    // Those that wait unseen are somebody else's.
    if ((m_settings && m_settings->isVisible()) || !m_store.snapshot())
        return;
    m_settings = new SettingsDialog(m_store, window());
    m_settings->open();
}

void RootView::showUnconfirmed()
{
    if (m_unconfirmed || !m_store.snapshot())
        return;
    m_unconfirmed = new UnconfirmedDialog(m_store, window());
    m_unconfirmed->open();
}
