#include "LedgerUI/Screens/SignIn/AuthEntryView.h"

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/SignIn/SignInForm.h"

namespace {

Registration registrationOf(const SignInDraft& draft)
{
    return {.name = draft.name,
            .email = draft.email,
            .password = draft.password,
            .companyName = draft.companyName,
            .countries = draft.countries,
            .invitationCode = std::nullopt};
}

}

AuthEntryView::AuthEntryView(SignInPage page, LedgerStore& store, QWidget* parent) : SignInWay{store, parent}
{
    m_form = new SignInForm(page, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_form);
    connect(m_form, &SignInForm::submitted, this, &AuthEntryView::submit);
    if (page == SignInPage::login) {
        m_forgot = m_form->addLink(QStringLiteral("forgotPassword"));
        connect(m_forgot, &QPushButton::clicked, this, [this] { Q_EMIT modeWanted(SignInMode::reset); });
    }
    retranslate();
}

void AuthEntryView::present(const SignInState& state)
{
    SignInWay::present(state);
    m_form->present(state);
}

QString AuthEntryView::email() const
{
    return qString(m_form->draft().email);
}

void AuthEntryView::setEmail(const QString& email)
{
    m_form->setText(SignInField::email, email);
}

void AuthEntryView::leave()
{
    m_form->clearSecrets();
}

QList<QWidget*> AuthEntryView::tabStops() const
{
    return m_form->tabStops();
}

void AuthEntryView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void AuthEntryView::send(const SignInDraft& draft)
{
    // The root screen leaves this one as soon as somebody is signed in; an application that awaits review is told of
    // by the alert and by the banner.
    if (m_form->page() == SignInPage::login)
        await(store().login(draft.email, draft.password), [] {});
    else if (!draft.invitationCode.empty())
        Q_EMIT activationWanted(draft);
    else
        await(store().registerCompany(registrationOf(draft)), [] {});
}

void AuthEntryView::retranslate()
{
    if (m_forgot)
        m_forgot->setText(word(signInWords(), "forgot"));
}
