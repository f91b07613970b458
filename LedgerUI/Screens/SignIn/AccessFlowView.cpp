#include "LedgerUI/Screens/SignIn/AccessFlowView.h"

#include <array>

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/SignIn/SignInForm.h"
#include "LedgerUI/Screens/SignIn/StepRow.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int stepCount = 3;
constexpr int secondsUntilResend = 30;
constexpr std::chrono::seconds second{1};

/// The password is set, but no company is open to the person.
bool isNotLetIn(const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error && (error->code == ServiceCode::companyPending || error->code == ServiceCode::companyRejected ||
                     error->code == ServiceCode::inactiveMember);
}

}

AccessFlowView::AccessFlowView(AccessFlow::Purpose purpose, LedgerStore& store, QWidget* parent)
    : SignInWay{store, parent}, m_flow{purpose}, m_untilResend{second}
{
    m_layout = new QVBoxLayout(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(Space::step4);
    m_steps = new StepRow(stepCount, this);
    m_layout->addWidget(m_steps);
    if (purpose == AccessFlow::Purpose::join) {
        for (const auto page : {SignInPage::invitation, SignInPage::joining, SignInPage::verification,
                                SignInPage::newAccount, SignInPage::existingAccount})
            addForm(page);
    } else {
        for (const auto page : {SignInPage::forgotten, SignInPage::verification, SignInPage::newPassword})
            addForm(page);
    }
    addLinks();
    connect(&m_untilResend, &Countdown::changed, this, &AccessFlowView::presentResend);
    retranslate();
}

void AccessFlowView::present(const SignInState& state)
{
    SignInWay::present(state);
    m_state = state;
    for (const auto& [page, form] : m_forms)
        form->present(state);
    presentResend();
}

QString AccessFlowView::email() const
{
    return m_flow.step() == AccessFlow::Step::invitation ? qString(form().draft().email) : qString(m_flow.email());
}

void AccessFlowView::setEmail(const QString& email)
{
    for (const auto& [page, form] : m_forms)
        form->setText(SignInField::email, email);
}

void AccessFlowView::leave()
{
    const auto typed = email();
    m_flow.restart();
    m_untilResend.stop();
    for (const auto& [page, form] : m_forms)
        form->clearSecrets();
    setEmail(typed);
    presentPage();
}

void AccessFlowView::activate(const SignInDraft& draft)
{
    for (const auto& [page, form] : m_forms) {
        form->setText(SignInField::email, qString(draft.email));
        form->setText(SignInField::invitationCode, qString(draft.invitationCode));
        form->setText(SignInField::name, qString(draft.name));
    }
    submit();
}

QList<QWidget*> AccessFlowView::tabStops() const
{
    QList<QWidget*> stops;
    for (const auto& [page, form] : m_forms)
        stops += form->tabStops();
    return stops;
}

void AccessFlowView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void AccessFlowView::send(const SignInDraft& draft)
{
    switch (m_flow.page()) {
    case SignInPage::invitation:
    case SignInPage::forgotten:
        askForCode(draft);
        break;
    case SignInPage::joining:
        await(store().loginAndAcceptInvitation(draft.email, draft.password, draft.invitationCode), [] {});
        break;
    case SignInPage::verification:
        await(store().verifyAccess(m_flow.challengeID(), draft.verificationCode),
              [this](const AccessVerification& verification) {
                  m_flow.verified(verification);
                  openPage();
              });
        break;
    default:
        await(store().completeAccess(m_flow.challengeID(), m_flow.ticket(), draft.name, draft.password), [] {});
        break;
    }
}

bool AccessFlowView::meet(const SignInProblem& problem)
{
    if (problem.key != "ticketGone")
        return false;
    changeEmail();
    return true;
}

void AccessFlowView::adoptAlert(const Failure& failure)
{
    if (m_flow.page() == SignInPage::newPassword && isNotLetIn(failure))
        Q_EMIT modeWanted(SignInMode::login);
}

void AccessFlowView::addForm(SignInPage page)
{
    auto* form = new SignInForm(page, this);
    form->hide();
    m_forms[page] = form;
    m_layout->addWidget(form);
    connect(form, &SignInForm::submitted, this, &AccessFlowView::submit);
}

void AccessFlowView::addLinks()
{
    const auto add = [this](SignInPage page, const char* name, std::string_view words, auto act) {
        auto* link = m_forms.at(page)->addLink(QString::fromLatin1(name));
        m_links[words] = link;
        connect(link, &QPushButton::clicked, this, act);
        return link;
    };
    m_resend = add(SignInPage::verification, "resendCode", "resend", [this] { resend(); });
    add(SignInPage::verification, "changeEmail", "changeEmail", [this] { changeEmail(); });
    if (m_flow.purpose() == AccessFlow::Purpose::reset)
        return;
    add(SignInPage::invitation, "hasPassword", "hasPassword", [this] { choosePassword(true); });
    add(SignInPage::joining, "hasNoPassword", "hasNoPassword", [this] { choosePassword(false); });
}

void AccessFlowView::askForCode(const SignInDraft& asked)
{
    await(store().startAccess(asked.email, asked.invitationCode, std::string{m_flow.purposeName()}),
          [this, asked](const AccessChallenge& challenge) {
              m_flow.codeSent(asked, challenge);
              m_forms.at(SignInPage::verification)->clearSecrets(); // a code of an earlier mail opens nothing any more
              m_untilResend.start(secondsUntilResend);
              openPage();
          });
}

void AccessFlowView::resend()
{
    Q_EMIT submitting();
    askForCode({.email = m_flow.email(), .invitationCode = m_flow.invitationCode()});
}

void AccessFlowView::changeEmail()
{
    leave();
    openPage();
}

void AccessFlowView::choosePassword(bool hasPassword)
{
    const auto typed = form().draft();
    m_flow.chooseToJoin(hasPassword);
    form().setText(SignInField::email, qString(typed.email));
    form().setText(SignInField::invitationCode, qString(typed.invitationCode));
    openPage();
}

/// Where the person goes on.
void AccessFlowView::openPage()
{
    presentPage();
    form().focusStart();
}

void AccessFlowView::presentPage()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto lead = m_flow.lead(locale);
    for (const auto& [page, each] : m_forms)
        each->setVisible(page == m_flow.page());
    form().setLead(lead.text, lead.name);
    const auto& words = signInWords();
    const QStringList titles{
        word(words, m_flow.purpose() == AccessFlow::Purpose::join ? "step.join.0" : "step.reset.0"),
        word(words, "step.1"), word(words, "step.2")};
    const int current = static_cast<int>(m_flow.step());
    m_steps->setVisible(m_flow.page() != SignInPage::joining);
    m_steps->present(titles, current,
                     word(words, "stepOf", {std::to_string(current + 1), titles[current].toStdString()}));
}

void AccessFlowView::presentResend()
{
    const int left = m_untilResend.left();
    m_resend->setText(left > 0 ? word(signInWords(), "resendIn", {std::to_string(left)})
                               : word(signInWords(), "resend"));
    m_resend->setEnabled(left <= 0 && m_state.maySubmit);
}

void AccessFlowView::retranslate()
{
    for (const auto& [words, link] : m_links)
        link->setText(word(signInWords(), words));
    presentPage();
    presentResend();
}
