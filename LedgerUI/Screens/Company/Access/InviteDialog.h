#pragma once

#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Components/Fields/FieldMap.h"
#include "LedgerUI/Presentation/Company/InviteForm.h"

class AccessEditor;
class FormField;
class QComboBox;
class QLineEdit;

/// Invites somebody. Deletes itself when it closes; open it with `open()`. The code is shown in a dialog of its own,
/// which takes the place of this one.
class InviteDialog final : public CommandForm {
    Q_OBJECT
public:
    InviteDialog(LedgerStore& store, QWidget* parent);

Q_SIGNALS:
    /// The service has made the invitation.
    void invited();

private:
    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void bind();
    void presentRoles();
    void edit(InviteForm form);
    void proceed();
    /// The invitation that is to be sent, unless something is wrong, which is said then.
    std::optional<Invite> checked();
    void send(const Invite& invitation);
    void finish(const Result<InviteResponse>& reply);

    InviteSubmission m_submission{InviteForm::fresh()};
    FieldMap<InviteForm::Field> m_fields;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_email = nullptr;
    QComboBox* m_role = nullptr;
    FormField* m_nameField = nullptr;
    FormField* m_emailField = nullptr;
    FormField* m_roleField = nullptr;
    AccessEditor* m_access = nullptr;
};
