#pragma once

#include <string>

#include <QWidget>

class AddressFold;
class BusyBar;
class LedgerStore;
class LoginForm;
class QComboBox;
class QStackedWidget;
class SignInAside;

/// What a signed-out person sees: language, ways to sign in, the demonstration and the service's address.
class SignInView final : public QWidget {
    Q_OBJECT
public:
    /// `defaultAddress` is the service that the program started with.
    SignInView(LedgerStore& store, std::string defaultAddress, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* buildStrip();
    QWidget* buildPanel(std::string defaultAddress);
    void bind();
    void present();
    void retranslate();
    void setTabOrders();

    LedgerStore& m_store;
    QComboBox* m_language = nullptr;
    SignInAside* m_aside = nullptr;
    QStackedWidget* m_forms = nullptr;
    LoginForm* m_login = nullptr;
    AddressFold* m_address = nullptr;
    BusyBar* m_busy = nullptr;
};
