#pragma once

#include <string_view>

#include <QWidget>

class FormField;
class LedgerStore;
class PasswordField;
class PrimaryButton;
class QLineEdit;
class TextLabel;
struct SignInState;

/// Sign-in by work e-mail and password.
class LoginForm final : public QWidget {
    Q_OBJECT
public:
    explicit LoginForm(LedgerStore& store, QWidget* parent = nullptr);

    void submit();
    void present(const SignInState& state);
    void setEmail(const QString& email);
    /// To the first empty field.
    void focusStart();
    /// The controls from top to bottom.
    [[nodiscard]] QList<QWidget*> tabStops() const;

Q_SIGNALS:
    /// Emitted before the request, so that other parts of the screen can hand in what is typed.
    void submitting();
    /// The service's address was refused, with the message to show beside it.
    void addressRefused(const QString& message);

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void retranslate();
    [[nodiscard]] bool isComplete();

    LedgerStore& m_store;
    TextLabel* m_title = nullptr;
    QLineEdit* m_email = nullptr;
    PasswordField* m_password = nullptr;
    FormField* m_emailField = nullptr;
    FormField* m_passwordField = nullptr;
    PrimaryButton* m_signIn = nullptr;
    std::string_view m_submitText = "login";
    bool m_maySubmit = true;
};
