#pragma once

#include <QPointer>
#include <QWidget>

#include "LedgerUI/Presentation/SignIn/SignInState.h"

class AddressFold;
class BusyBar;
class LedgerStore;
class LoginForm;
class QComboBox;
class QStackedWidget;
class SignInAside;
class SignInProgress;

/// What a signed-out person sees: language, ways to sign in, the demonstration and the service's address.
class SignInView final : public QWidget {
    Q_OBJECT
public:
    SignInView(LedgerStore& store, const SignInStart& start, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* buildStrip();
    QWidget* buildPanel(const SignInStart& start);
    void bind();
    /// Something is about to be sent, and its answer waited for.
    void expectAnswer();
    void followStore();
    void present();
    void placeFocus(QWidget* lost);
    void retranslate();
    void setTabOrders();

    LedgerStore& m_store;
    QComboBox* m_language = nullptr;
    SignInAside* m_aside = nullptr;
    QStackedWidget* m_forms = nullptr;
    LoginForm* m_login = nullptr;
    AddressFold* m_address = nullptr;
    SignInProgress* m_progress = nullptr;
    BusyBar* m_busy = nullptr;
    SignInWait m_wait;
    QPointer<QWidget> m_focusBefore; // a field that is locked gives the focus away until the answer is there
};
