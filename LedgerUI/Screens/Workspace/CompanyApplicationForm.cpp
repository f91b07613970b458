#include "LedgerUI/Screens/Workspace/CompanyApplicationForm.h"

#include <QCoro/QCoroTask>
#include <QLineEdit>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/CompanyDirectory.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 520;

}

CompanyApplicationForm::CompanyApplicationForm(LedgerStore& store, QWidget* parent)
    : CommandForm{store, parent}, m_requestID{store.newIdentifier()}
{
    setObjectName(QStringLiteral("companyApplicationDialog"));
    buildLayout();
    connect(this, &FormDialog::confirmed, this, &CompanyApplicationForm::proceed);
    connect(m_name, &QLineEdit::returnPressed, this, &CompanyApplicationForm::proceed);
    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& name) {
        m_submission.edit(name);
        present();
    });
    present();
}

void CompanyApplicationForm::present()
{
    const auto& words = companyAccessWords();
    setWindowTitle(word(words, "applyTitle"));
    m_lead->setText(word(words, "applyLead"));
    m_field->setLabel(word(words, "name"));
    m_field->error().present(m_isChecked ? CompanyAccess::nameProblem(m_name->text(), locale()) : QString{});
    const Note unknown{Banner::Kind::warn, m_submission.isUncertain() ? word(words, "applyUnknown") : QString{}};
    presentStanding({.stage = m_submission.stage(),
                     .refusal = m_submission.refusal(),
                     .note = unknown,
                     .confirm = word(words, "applyConfirm"),
                     .hasChanges = !m_name->text().trimmed().isEmpty()});
}

QWidget& CompanyApplicationForm::firstField() const
{
    return m_submission.isUncertain() ? static_cast<QWidget&>(confirmButton()) : *m_name;
}

void CompanyApplicationForm::buildLayout()
{
    auto* body = new QWidget(bodyPlace());
    m_lead = new TextLabel(TypeStep::body, Token::text2, body);
    m_lead->setWordWrap(true);
    m_name = new QLineEdit(body);
    m_name->setObjectName(QStringLiteral("applicationName"));
    m_field = new FormField(m_name, body);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(Space::fieldToField);
    rows->addWidget(m_lead);
    rows->addWidget(m_field);
    rows->addStretch(1);
    setBody(body, dialogWidth);
}

void CompanyApplicationForm::proceed()
{
    if (store().isBusy())
        return;
    if (const auto* name = commandToSend(m_submission, [this] { return checked(); }))
        send(*name);
}

std::optional<std::string> CompanyApplicationForm::checked()
{
    m_isChecked = true;
    if (CompanyAccess::nameProblem(m_name->text(), locale()).isEmpty())
        return m_name->text().trimmed().toStdString();
    present();
    m_name->setFocus();
    return {};
}

void CompanyApplicationForm::send(const std::string& name)
{
    present();
    QCoro::connect(store().createAnotherCompany(name, m_requestID), this,
                   [this](const Result<PendingCompanyRegistration>& applied) { finish(applied); });
}

void CompanyApplicationForm::finish(const Result<PendingCompanyRegistration>& applied)
{
    if (applied) {
        m_submission.succeed();
        if (applied->status == ApprovalStatus::approved) // else the alert says what its review has come to
            Q_EMIT founded(word(companyAccessWords(), "founded", {applied->companyName}));
        leave();
        return;
    }
    m_submission.fail(applied.error());
    sayHere();
    presentAnew();
}
