#include "LedgerUI/Screens/SignIn/SignInForm.h"

#include <algorithm>

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Text/Country.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/PasswordField.h"
#include "LedgerUI/Components/Table/ChoiceField.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/SignIn/SignInState.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int buttonWidth = 120;
constexpr int codeWidth = 220;

/// The object names of the fields, which tests and readers' scripts go by.
QString nameOf(SignInField field)
{
    switch (field) {
    case SignInField::companyName:
        return QStringLiteral("companyName");
    case SignInField::countries:
        return QStringLiteral("countries");
    case SignInField::name:
        return QStringLiteral("personName");
    case SignInField::email:
        return QStringLiteral("email");
    case SignInField::password:
        return QStringLiteral("password");
    case SignInField::invitationCode:
        return QStringLiteral("invitationCode");
    case SignInField::verificationCode:
        return QStringLiteral("verificationCode");
    }
    return {};
}

TextLabel* wrapping(TypeStep step, Token tone, QWidget* parent)
{
    auto* label = new TextLabel(step, tone, parent);
    label->setWordWrap(true);
    label->hide();
    return label;
}

}

SignInForm::SignInForm(SignInPage page, QWidget* parent) : QWidget{parent}, m_page{page}
{
    buildLayout();
    connect(m_submit, &QPushButton::clicked, this, &SignInForm::submitted);
    retranslate();
}

SignInDraft SignInForm::draft() const
{
    SignInDraft filled{.companyName = text(SignInField::companyName),
                       .name = text(SignInField::name),
                       .email = text(SignInField::email),
                       .password = text(SignInField::password),
                       .invitationCode = text(SignInField::invitationCode),
                       .verificationCode = text(SignInField::verificationCode)};
    if (m_countries)
        filled.countries.assign(m_countries->chosen().begin(), m_countries->chosen().end());
    return cleaned(std::move(filled));
}

void SignInForm::setText(SignInField field, const QString& text)
{
    if (auto* line = edit(field); line && line->text() != text) {
        line->setText(text);
        withdraw(field);
    }
}

void SignInForm::clearSecrets()
{
    for (const auto field : {SignInField::password, SignInField::verificationCode})
        setText(field, {});
    m_problems.clear();
    presentProblems();
}

void SignInForm::setLead(const QString& text, const QString& name)
{
    m_lead->setText(text);
    m_lead->setVisible(!text.isEmpty());
    m_leadName->setText(name);
    m_leadName->setVisible(!name.isEmpty());
}

QPushButton* SignInForm::addLink(const QString& name)
{
    auto* link = new QPushButton(this);
    link->setObjectName(name);
    link->setProperty("kind", QStringLiteral("link"));
    link->setAutoDefault(false);
    m_buttons->insertWidget(m_buttons->count() - 1, link);
    m_links.push_back(link);
    return link;
}

void SignInForm::present(const SignInState& state)
{
    m_isSending = state.isSending;
    for (const auto& each : m_entries) {
        each.control->setEnabled(state.takesInput);
        if (const auto* password = qobject_cast<PasswordField*>(each.control))
            password->eye()->setEnabled(state.takesInput);
    }
    m_submit->setEnabled(state.maySubmit);
    for (auto* link : m_links)
        link->setEnabled(state.takesInput);
    const auto& row = signInPageRow(m_page);
    m_submit->setText(word(signInWords(), m_isSending ? row.busy : row.submit));
}

void SignInForm::complain(const std::vector<SignInProblem>& problems)
{
    m_problems = problems;
    presentProblems();
    const auto first = std::ranges::find_if(m_entries, [](const Entry& each) { return each.field->error().isShown(); });
    if (first != m_entries.end())
        first->control->setFocus();
}

void SignInForm::focusStart()
{
    const auto empty = std::ranges::find_if(m_entries, isEmpty);
    (empty == m_entries.end() ? m_entries.front() : *empty).control->setFocus();
}

void SignInForm::focusFirst()
{
    m_entries.front().control->setFocus();
}

QList<QWidget*> SignInForm::tabStops() const
{
    QList<QWidget*> stops;
    for (const auto& each : m_entries) {
        stops += each.control;
        if (const auto* password = qobject_cast<PasswordField*>(each.control))
            stops += password->eye();
    }
    stops += m_submit;
    for (auto* link : m_links)
        stops += link;
    return stops;
}

void SignInForm::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void SignInForm::buildLayout()
{
    const auto& page = signInPageRow(m_page);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Space::fieldToField);
    m_lead = wrapping(TypeStep::body, Token::text, this);
    m_leadName = new ElidedLabel(TypeStep::body, Token::text, Qt::ElideMiddle, this);
    m_leadName->setBold(true);
    m_leadName->hide();
    auto* lead = new QVBoxLayout;
    lead->setSpacing(0);
    lead->addWidget(m_lead);
    lead->addWidget(m_leadName);
    layout->addLayout(lead);

    QHBoxLayout* line = nullptr;
    for (const auto& row : page.fields) {
        auto* control = makeControl(row.field);
        auto* field = new FormField(control, this);
        m_entries.push_back({row, control, field});
        if (!row.isBesideLast) {
            line = new QHBoxLayout;
            line->setSpacing(Space::step3);
            layout->addLayout(line);
        }
        line->addWidget(field, 1, Qt::AlignTop);
        if (row.field == SignInField::verificationCode)
            field->layout()->setAlignment(control, Qt::AlignLeft);
    }
    m_note = wrapping(TypeStep::small, Token::text2, this);
    m_submit = new PrimaryButton(this);
    m_submit->setObjectName(qString(page.name));
    m_submit->setMinimumWidth(buttonWidth);
    m_submit->setToolTip(KeyBindings::shown(Command::pressFocused));
    m_beside = wrapping(TypeStep::small, Token::text2, this);
    m_hint = wrapping(TypeStep::small, Token::text2, this);
    m_buttons = new QHBoxLayout;
    m_buttons->setSpacing(Space::step4);
    m_buttons->addWidget(m_submit);
    m_buttons->addWidget(m_beside, 1);
    m_buttons->addStretch(0);
    layout->addWidget(m_note);
    layout->addSpacing(Space::step4 - Space::fieldToField);
    layout->addLayout(m_buttons);
    layout->addWidget(m_hint);
}

QWidget* SignInForm::makeControl(SignInField field)
{
    if (field == SignInField::countries) {
        m_countries = new ChoiceField(this);
        m_countries->setObjectName(nameOf(field));
        connect(m_countries, &ChoiceField::chosenChanged, this, [this, field] { withdraw(field); });
        return m_countries;
    }
    auto* line = field == SignInField::password ? new PasswordField(this) : new QLineEdit(this);
    line->setObjectName(nameOf(field));
    if (field == SignInField::email)
        line->setInputMethodHints(Qt::ImhEmailCharactersOnly | Qt::ImhNoAutoUppercase);
    else if (field == SignInField::invitationCode)
        line->setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    else if (field == SignInField::verificationCode) {
        line->setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhPreferNumbers);
        line->setFont(TypeScale::font(TypeStep::figure));
        line->setFixedWidth(codeWidth);
        line->setProperty("extent", QStringLiteral("code"));
    }
    connect(line, &QLineEdit::returnPressed, this, &SignInForm::submitted);
    connect(line, &QLineEdit::textEdited, this, [this, field] { withdraw(field); });
    return line;
}

void SignInForm::presentCountries()
{
    if (!m_countries)
        return;
    const auto& locale = InterfaceLanguage::tag();
    std::vector<ChoiceList::Choice> choices;
    for (const auto& code : Country::all(locale))
        choices.push_back({.id = code, .text = qString(Country::name(code, locale))});
    m_countries->present({.name = word(signInWords(), "countries"),
                          .all = {},
                          .search = word(signInWords(), "countriesSearch"),
                          .noMatch = word(signInWords(), "countriesNoMatch")},
                         choices, m_countries->chosen());
}

void SignInForm::presentProblems()
{
    for (const auto& each : m_entries) {
        const auto found = std::ranges::find(m_problems, std::optional{each.row.field}, &SignInProblem::field);
        each.field->error().present(found == m_problems.end() ? QString{} : found->text(InterfaceLanguage::tag()));
    }
}

void SignInForm::withdraw(SignInField field)
{
    std::erase_if(m_problems, [field](const SignInProblem& each) { return each.field == field; });
    presentProblems();
}

void SignInForm::retranslate()
{
    const auto& words = signInWords();
    for (const auto& each : m_entries) {
        each.field->setLabel(word(words, each.row.label));
        if (auto* password = qobject_cast<PasswordField*>(each.control))
            password->setEyeNames(word(words, "showPassword"), word(words, "hidePassword"));
    }
    presentCountries();
    const auto& page = signInPageRow(m_page);
    m_submit->setText(word(words, m_isSending ? page.busy : page.submit));
    const auto say = [&](TextLabel* label, std::string_view key) {
        label->setText(key.empty() ? QString{} : word(words, key));
        label->setVisible(!key.empty());
    };
    say(m_note, page.note);
    say(m_beside, page.beside);
    say(m_hint, page.hint);
    presentProblems();
}

const SignInForm::Entry* SignInForm::entry(SignInField field) const
{
    const auto found = std::ranges::find_if(m_entries, [field](const Entry& each) { return each.row.field == field; });
    return found == m_entries.end() ? nullptr : &*found;
}

QLineEdit* SignInForm::edit(SignInField field) const
{
    const auto* found = entry(field);
    return found ? qobject_cast<QLineEdit*>(found->control) : nullptr;
}

std::string SignInForm::text(SignInField field) const
{
    const auto* line = edit(field);
    return line ? line->text().toStdString() : std::string{};
}

bool SignInForm::isEmpty(const Entry& entry)
{
    if (const auto* line = qobject_cast<QLineEdit*>(entry.control))
        return line->text().isEmpty();
    return static_cast<const ChoiceField*>(entry.control)->chosen().empty();
}
