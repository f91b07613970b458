#include "LedgerUI/Screens/SignIn/LoginForm.h"

#include <QCoro/QCoroTask>
#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/PasswordField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/SignIn/SignInState.h"
#include "LedgerUI/Presentation/SignIn/SignInWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int buttonWidth = 120;

/// Without what a copied address brings along: blanks around it, and characters that nobody sees anywhere in it.
QString visibleText(QString typed)
{
    typed.removeIf(
        [](QChar each) { return each.category() == QChar::Other_Format || each.category() == QChar::Other_Control; });
    return typed.trimmed();
}

bool refusesAddress(const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error && error->code == ClientCode::invalidServerURL;
}

}

LoginForm::LoginForm(LedgerStore& store, QWidget* parent) : QWidget{parent}, m_store{store}
{
    buildLayout();
    connect(m_signIn, &QPushButton::clicked, this, &LoginForm::submit);
    connect(m_email, &QLineEdit::returnPressed, this, &LoginForm::submit);
    connect(m_password, &QLineEdit::returnPressed, this, &LoginForm::submit);
    connect(m_email, &QLineEdit::textEdited, this, [this] { m_emailField->error().present({}); });
    connect(m_password, &QLineEdit::textEdited, this, [this] { m_passwordField->error().present({}); });
    retranslate();
}

void LoginForm::submit()
{
    if (!m_maySubmit || !isComplete())
        return;
    Q_EMIT submitting();
    QCoro::connect(m_store.login(visibleText(m_email->text()).toStdString(), m_password->text().toStdString()), this,
                   [this](const Result<void>& done) {
                       if (done || std::holds_alternative<Cancelled>(done.error()))
                           return;
                       if (refusesAddress(done.error()))
                           Q_EMIT addressRefused(qString(m_store.friendly(done.error())));
                       else
                           m_email->setFocus();
                   });
}

void LoginForm::present(const SignInState& state)
{
    m_maySubmit = state.maySubmit;
    m_submitText = state.submit;
    for (auto* field : {static_cast<QWidget*>(m_email), static_cast<QWidget*>(m_password), m_password->eye()})
        field->setEnabled(state.takesInput);
    m_signIn->setEnabled(state.maySubmit);
    retranslate();
}

void LoginForm::setEmail(const QString& email)
{
    m_email->setText(email);
}

void LoginForm::focusStart()
{
    (m_email->text().isEmpty() ? m_email : static_cast<QLineEdit*>(m_password))->setFocus();
}

QList<QWidget*> LoginForm::tabStops() const
{
    return {m_email, m_password, m_password->eye(), m_signIn};
}

void LoginForm::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void LoginForm::buildLayout()
{
    m_title = new TextLabel(TypeStep::title, Token::text, this);
    m_email = new QLineEdit(this);
    m_email->setObjectName(QStringLiteral("email"));
    m_email->setInputMethodHints(Qt::ImhEmailCharactersOnly | Qt::ImhNoAutoUppercase);
    m_emailField = new FormField(m_email, this);
    m_password = new PasswordField(this);
    m_password->setObjectName(QStringLiteral("password"));
    m_passwordField = new FormField(m_password, this);
    m_signIn = new PrimaryButton(this);
    m_signIn->setObjectName(QStringLiteral("signIn"));
    m_signIn->setMinimumWidth(buttonWidth);
    m_signIn->setToolTip(KeyBindings::shown(Command::pressFocused));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_title);
    layout->addSpacing(Space::step3);
    layout->addWidget(m_emailField);
    layout->addSpacing(Space::fieldToField);
    layout->addWidget(m_passwordField);
    layout->addSpacing(Space::step4);
    layout->addWidget(m_signIn, 0, Qt::AlignLeft);
}

void LoginForm::retranslate()
{
    const auto& words = signInWords();
    m_title->setText(word(words, "login"));
    m_emailField->setLabel(word(words, "email"));
    m_passwordField->setLabel(word(words, "password"));
    m_password->setEyeNames(word(words, "showPassword"), word(words, "hidePassword"));
    m_signIn->setText(word(words, m_submitText));
    if (m_emailField->error().isShown())
        m_emailField->error().present(word(words, "emailRequired"));
    if (m_passwordField->error().isShown())
        m_passwordField->error().present(word(words, "passwordRequired"));
}

bool LoginForm::isComplete()
{
    const bool hasEmail = !visibleText(m_email->text()).isEmpty();
    const bool hasPassword = !m_password->text().isEmpty();
    m_emailField->error().present(hasEmail ? QString{} : word(signInWords(), "emailRequired"));
    m_passwordField->error().present(hasPassword ? QString{} : word(signInWords(), "passwordRequired"));
    if (!hasEmail)
        m_email->setFocus();
    else if (!hasPassword)
        m_password->setFocus();
    return hasEmail && hasPassword;
}
