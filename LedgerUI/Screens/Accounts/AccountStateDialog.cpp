#include "LedgerUI/Screens/Accounts/AccountStateDialog.h"

#include <utility>

#include <QCoro/QCoroTask>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 520;

}

AccountStateDialog::AccountStateDialog(LedgerStore& store, AccountStateChange change, QWidget* parent)
    : CommandForm{store, parent}, m_submission{change}, m_initial{std::move(change)}
{
    setObjectName(QStringLiteral("accountStateDialog"));
    confirmButton().setObjectName(QStringLiteral("accountStateConfirm"));
    cancelButton().setObjectName(QStringLiteral("accountStateCancel"));
    auto* body = new QWidget(bodyPlace());
    m_text = new TextLabel(TypeStep::body, Token::text, body);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_name = new LimitedEdit(Naming::maximumName);
    m_name->setObjectName(QStringLiteral("accountStateName"));
    m_nameField = new FormField(m_name, body);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(Space::fieldToField);
    rows->addWidget(m_text);
    rows->addWidget(m_nameField);
    rows->addSpacing(Space::step6); // a lower body would take its height from the banner
    rows->addStretch(1);
    setBody(body, dialogWidth);
    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& typed) {
        auto change = m_submission.form();
        change.name = typed.toStdString();
        m_submission.edit(std::move(change));
        present();
    });
    connect(this, &FormDialog::confirmed, this, &AccountStateDialog::submit);
    present();
}

void AccountStateDialog::present()
{
    const auto content = AccountStates::content(m_submission, *snapshot(), locale());
    setWindowTitle(content.title);
    m_text->setText(content.text);
    m_nameField->setLabel(wordIn(locale(), accountFormWords(), "name"));
    m_nameField->setVisible(content.showsName);
    if (m_name->text() != content.name)
        m_name->setText(content.name);
    m_nameField->error().present(content.nameMessage);
    presentStanding({.stage = m_submission.stage(),
                     .refusal = m_submission.refusal(),
                     .confirm = content.confirm,
                     .hasChanges = m_submission.form() != m_initial,
                     .whyNot = content.whyNot});
}

void AccountStateDialog::adoptSnapshot()
{
    if (m_submission.isSaving())
        return;
    takeSnapshot();
    present();
}

QWidget& AccountStateDialog::firstField() const
{
    if (m_submission.isEditing() && !m_nameField->isHidden())
        return *m_name;
    return confirmButton().isEnabled() ? static_cast<QWidget&>(confirmButton()) : cancelButton();
}

void AccountStateDialog::submit()
{
    if (const auto* command = commandToSend(m_submission, [this] { return checked(); }))
        send(*command);
}

std::optional<AccountUpdate> AccountStateDialog::checked()
{
    const auto content = AccountStates::content(m_submission, *snapshot(), locale());
    if (content.whyNot.isEmpty() && content.nameMessage.isEmpty())
        return AccountStates::command(m_submission.form());
    if (content.whyNot.isEmpty())
        m_name->setFocus(Qt::OtherFocusReason);
    return {};
}

void AccountStateDialog::send(const AccountUpdate& update)
{
    present();
    const auto done = [this](const Result<void>& reply) { finish(reply); };
    const bool archives = update.archived.value_or(false);
    if (archives)
        QCoro::connect(store().archiveAccount(m_initial.accountID), this, done);
    else
        QCoro::connect(store().updateAccount(m_initial.accountID, update), this, done);
}

void AccountStateDialog::finish(const Result<void>& reply)
{
    if (!m_submission.isSaving())
        return;
    if (reply) {
        const auto sentence = AccountStates::content(m_submission, *snapshot(), locale()).done;
        m_submission.succeed();
        Q_EMIT changed(sentence);
        leave();
        return;
    }
    m_submission.fail(reply.error());
    sayHere();
    takeSnapshot();
    presentAnew();
}
