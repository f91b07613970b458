#include "LedgerUI/Screens/Accounts/AccountFormDialog.h"

#include <utility>

#include <QCoro/QCoroTask>
#include <QPushButton>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Accounts/AccountFormBody.h"

namespace {

constexpr int formWidth = 640;

}

AccountFormDialog::AccountFormDialog(LedgerStore& store, AccountSubject subject, QWidget* parent)
    : CommandForm{store, parent}, m_subject{std::move(subject)}, m_submission{AccountEditing{.draft = m_subject.before}}
{
    setObjectName(QStringLiteral("accountForm"));
    confirmButton().setObjectName(QStringLiteral("accountSave"));
    cancelButton().setObjectName(QStringLiteral("accountCancel"));
    m_body = new AccountFormBody;
    setBody(m_body, formWidth);
    connect(m_body, &AccountFormBody::edited, this, &AccountFormDialog::edit);
    connect(this, &FormDialog::confirmed, this, &AccountFormDialog::submit);
    present();
}

void AccountFormDialog::present()
{
    const auto content = AccountForm::content(m_subject, m_submission, *snapshot(), locale());
    setWindowTitle(content.title);
    m_body->present(content);
    presentStanding({.stage = m_submission.stage(),
                     .refusal = m_submission.refusal(),
                     .confirm = content.confirm,
                     .hasChanges = m_submission.form().draft != m_subject.before,
                     .whyNot = content.whyNot});
}

void AccountFormDialog::adoptSnapshot()
{
    // While a reply is awaited the snapshot that comes with it already holds the change.
    if (m_submission.isSaving())
        return;
    takeSnapshot();
    present();
}

QWidget& AccountFormDialog::firstField() const
{
    return m_submission.isUncertain() ? static_cast<QWidget&>(confirmButton()) : *m_body->control(m_first);
}

void AccountFormDialog::edit(AccountField field, const std::function<void(AccountDraft&)>& change)
{
    auto editing = m_submission.form();
    change(editing.draft);
    editing.problems.erase(field);
    // What a field means can depend on the purpose.
    if (field == AccountField::purpose)
        editing.problems.clear();
    m_submission.edit(std::move(editing));
    present();
}

void AccountFormDialog::submit()
{
    if (const auto* command = commandToSend(m_submission, [this] { return checked(); }))
        send(*command);
}

std::optional<AccountCommand> AccountFormDialog::checked()
{
    auto editing = m_submission.form();
    auto judgement = AccountDrafts::judge(m_subject, editing.draft, *snapshot());
    editing.problems = std::move(judgement.problems);
    const bool isSound = editing.problems.empty() && !judgement.refusal && m_body->isWithinLimits();
    const auto draft = editing.draft;
    m_submission.edit(std::move(editing));
    if (isSound && AccountDrafts::changesAnything(m_subject, draft))
        return AccountDrafts::command(m_subject, draft);
    if (isSound) {
        leave();
        return {};
    }
    present();
    const auto content = AccountForm::content(m_subject, m_submission, *snapshot(), locale());
    auto* const wrong = m_body->firstWrong(content);
    (wrong ? wrong : m_body->control(AccountField::name))->setFocus(Qt::OtherFocusReason);
    return {};
}

void AccountFormDialog::send(const AccountCommand& command)
{
    present();
    const auto done = [this](const Result<void>& reply) { finish(reply); };
    if (const auto* change = std::get_if<AccountChange>(&command))
        QCoro::connect(store().updateAccount(change->accountID, change->update), this, done);
    else
        QCoro::connect(store().createAccount(std::get<AccountCreate>(command)), this, done);
}

void AccountFormDialog::finish(const Result<void>& reply)
{
    if (!m_submission.isSaving())
        return;
    if (reply && !store().snapshot())
        return leave();
    if (reply) {
        m_submission.succeed();
        const auto id = AccountDrafts::resultOf(m_submission.sent(), *store().snapshot());
        Q_EMIT saved(qString(id), wordIn(locale(), accountFormWords(), m_subject.isNew() ? "done.new" : "done.change"));
        leave();
        return;
    }
    m_submission.fail(reply.error());
    sayHere();
    takeSnapshot();
    presentAnew();
}
