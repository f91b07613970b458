#include "LedgerUI/Screens/Company/Access/InviteDialog.h"

#include <utility>

#include <QComboBox>
#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/WindowBehind.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"
#include "LedgerUI/Screens/Company/Access/AccessEditor.h"
#include "LedgerUI/Screens/Company/Access/InvitationCodeDialog.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int roleWidth = 170;

}

InviteDialog::InviteDialog(LedgerStore& store, QWidget* parent) : CommandForm{store, parent}
{
    setObjectName(QStringLiteral("inviteDialog"));
    confirmButton().setObjectName(QStringLiteral("inviteConfirm"));
    cancelButton().setObjectName(QStringLiteral("inviteCancel"));
    buildBody();
    bind();
    present();
}

void InviteDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_name = new QLineEdit;
    m_name->setObjectName(QStringLiteral("inviteName"));
    m_email = new QLineEdit;
    m_email->setObjectName(QStringLiteral("inviteEmail"));
    m_email->setInputMethodHints(Qt::ImhEmailCharactersOnly);
    m_role = new QComboBox;
    m_role->setObjectName(QStringLiteral("inviteRole"));
    m_role->setMinimumWidth(roleWidth);
    dressComboBox(*m_role);
    m_nameField = new FormField(m_name, body);
    m_emailField = new FormField(m_email, body);
    m_roleField = new FormField(m_role, body);
    m_access = new AccessEditor(Space::dialogMargin, body);
    m_fields.add(InviteForm::Field::name, m_nameField->error());
    m_fields.add(InviteForm::Field::email, m_emailField->error());
    auto* person = new QHBoxLayout;
    person->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, 0);
    person->setSpacing(Space::step3);
    person->addWidget(m_nameField, 1, Qt::AlignTop);
    person->addWidget(m_emailField, 1, Qt::AlignTop);
    person->addWidget(m_roleField, 0, Qt::AlignTop);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::fieldToField);
    rows->addLayout(person);
    rows->addWidget(m_access, 1);
    setBody(body, Space::dialogMaximumWidth);
}

void InviteDialog::bind()
{
    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& text) {
        auto form = m_submission.form();
        form.name = text.toStdString();
        edit(std::move(form));
    });
    connect(m_email, &QLineEdit::textEdited, this, [this](const QString& text) {
        auto form = m_submission.form();
        form.email = text.toStdString();
        edit(std::move(form));
    });
    connect(m_role, &QComboBox::activated, this, [this](int at) {
        auto form = m_submission.form();
        form.access.role = m_role->itemData(at).toString().toStdString();
        edit(std::move(form));
    });
    connect(m_access, &AccessEditor::changed, this, [this](const AccessDraft& access) {
        auto form = m_submission.form();
        form.access = access;
        edit(std::move(form));
    });
    connect(this, &FormDialog::confirmed, this, &InviteDialog::proceed);
}

void InviteDialog::edit(InviteForm form)
{
    m_submission.edit(std::move(form));
    present();
}

void InviteDialog::adoptSnapshot()
{
    takeSnapshot();
    present();
}

void InviteDialog::present()
{
    const auto& words = companyWords();
    const auto& form = m_submission.form();
    setWindowTitle(wordIn(locale(), words, "inviteTitle"));
    m_nameField->setLabel(wordIn(locale(), words, "name"));
    m_emailField->setLabel(wordIn(locale(), words, "email"));
    m_roleField->setLabel(wordIn(locale(), words, "role"));
    m_fields.present(form.messages(locale()));
    presentRoles();
    m_access->present(InviteForm::nobody(), form.access, *snapshot());
    const auto refusal = MemberAccess::whyNotSave(InviteForm::nobody(), form.access, *snapshot());
    presentStanding({.stage = m_submission.stage(),
                     .refusal = m_submission.refusal(),
                     .note = refusal && form.isChecked
                                 ? Note{Banner::Kind::error, MemberAccess::refusalText(*refusal, locale())}
                                 : Note{},
                     .confirm = wordIn(locale(), words, "createInvitation"),
                     .hasChanges = form.hasChanges()});
}

void InviteDialog::presentRoles()
{
    const auto& role = m_submission.form().access.role;
    m_role->clear();
    auto* model = qobject_cast<QStandardItemModel*>(m_role->model());
    for (const auto each : MembershipRules::roles) {
        m_role->addItem(roleText(each, locale()), qString(each));
        const auto refusal = MemberAccess::whyNotRole(InviteForm::nobody(), each, *snapshot());
        auto* item = model->item(m_role->count() - 1);
        item->setEnabled(!refusal);
        item->setToolTip(refusal ? MemberAccess::refusalText(*refusal, locale()) : QString{});
        if (each == role)
            m_role->setCurrentIndex(m_role->count() - 1);
    }
}

void InviteDialog::proceed()
{
    if (const auto* invitation = commandToSend(m_submission, [this] { return checked(); }))
        send(*invitation);
}

std::optional<Invite> InviteDialog::checked()
{
    auto form = m_submission.form();
    form.isChecked = true;
    m_submission.edit(form);
    auto* const wrong = m_fields.firstOf(form.messages(locale()));
    if (!wrong && !MemberAccess::whyNotSave(InviteForm::nobody(), form.access, *snapshot()))
        return form.command(*snapshot());
    present();
    if (wrong)
        wrong->setFocus(Qt::OtherFocusReason);
    return {};
}

void InviteDialog::send(const Invite& invitation)
{
    present();
    QCoro::connect(store().invite(invitation, false), this,
                   [this](const Result<InviteResponse>& reply) { finish(reply); });
}

void InviteDialog::finish(const Result<InviteResponse>& reply)
{
    if (!m_submission.isSaving())
        return;
    if (!reply) {
        m_submission.fail(reply.error());
        presentAnew();
        return;
    }
    m_submission.succeed();
    Q_EMIT invited();
    const auto& sent = m_submission.sent();
    // The page closes with the session, and would take along what nobody is told twice.
    (new InvitationCodeDialog({.name = sent.name, .email = sent.email, .code = reply->code},
                              windowBehind(parentWidget())))
        ->open();
    leave();
}

QWidget& InviteDialog::firstField() const
{
    if (!m_submission.isEditing())
        return confirmButton();
    return m_submission.refusal() ? *m_email : *m_name;
}
