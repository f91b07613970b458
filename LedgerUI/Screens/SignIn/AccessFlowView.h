#pragma once

#include <chrono>
#include <map>

#include "LedgerUI/Presentation/SignIn/AccessFlow.h"
#include "LedgerUI/Presentation/SignIn/Countdown.h"
#include "LedgerUI/Presentation/SignIn/SignInState.h"
#include "LedgerUI/Screens/SignIn/SignInWay.h"

class QPushButton;
class QVBoxLayout;
class StepRow;

/// The ways that go by a code from a mail: activating what an invitation offers, and setting a new password.
class AccessFlowView final : public SignInWay {
    Q_OBJECT
public:
    AccessFlowView(AccessFlow::Purpose purpose, LedgerStore& store, QWidget* parent = nullptr);

    void present(const SignInState& state) override;
    [[nodiscard]] QString email() const override;
    void setEmail(const QString& email) override;
    void leave() override;
    /// Goes this way with what was filled in elsewhere.
    void activate(const SignInDraft& draft);
    [[nodiscard]] SignInForm& form() const override { return *m_forms.at(m_flow.page()); }
    [[nodiscard]] QList<QWidget*> tabStops() const override;

protected:
    void changeEvent(QEvent* event) override;
    void send(const SignInDraft& draft) override;
    bool meet(const SignInProblem& problem) override;
    void adoptAlert(const Failure& failure) override;

private:
    void addForm(SignInPage page);
    void addLinks();
    void askForCode(const SignInDraft& asked);
    void resend();
    void changeEmail();
    void choosePassword(bool hasPassword);
    void openPage();
    void presentPage();
    void presentResend();
    void retranslate();

    AccessFlow m_flow;
    QVBoxLayout* m_layout = nullptr;
    StepRow* m_steps = nullptr;
    std::map<SignInPage, SignInForm*> m_forms;
    std::map<std::string_view, QPushButton*> m_links; // by the row of signInWords() that they say
    QPushButton* m_resend = nullptr;
    Countdown m_untilResend;
    SignInState m_state;
};
