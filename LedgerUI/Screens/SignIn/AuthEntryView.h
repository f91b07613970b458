#pragma once

#include "LedgerUI/Screens/SignIn/SignInWay.h"

class QPushButton;

/// The ways that take one page: signing in by work e-mail and password, and applying for a company.
class AuthEntryView final : public SignInWay {
    Q_OBJECT
public:
    /// `page` is `login` or `registration`.
    AuthEntryView(SignInPage page, LedgerStore& store, QWidget* parent = nullptr);

    void present(const SignInState& state) override;
    [[nodiscard]] QString email() const override;
    void setEmail(const QString& email) override;
    void leave() override;
    [[nodiscard]] SignInForm& form() const override { return *m_form; }
    [[nodiscard]] QList<QWidget*> tabStops() const override;

protected:
    void changeEvent(QEvent* event) override;
    void send(const SignInDraft& draft) override;

private:
    void retranslate();

    SignInForm* m_form = nullptr;
    QPushButton* m_forgot = nullptr; // null on the page that has no such link
};
