#pragma once

#include <optional>
#include <string>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Accounts/AccountState.h"

class FormField;
class LimitedEdit;
class TextLabel;

/// Takes an account out of use, or back into it. Deletes itself when it closes; open it with `open()`.
class AccountStateDialog final : public CommandForm {
    Q_OBJECT
public:
    AccountStateDialog(LedgerStore& store, AccountStateChange change, QWidget* parent);

Q_SIGNALS:
    /// The service has done it, and the dialog is about to close.
    void changed(const QString& sentence);

private:
    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void submit();
    /// The command that is to be sent, unless something stands against it.
    std::optional<AccountUpdate> checked();
    void send(const AccountUpdate& update);
    void finish(const Result<void>& reply);

    AccountStateSubmission m_submission;
    AccountStateChange m_initial;
    TextLabel* m_text = nullptr;
    LimitedEdit* m_name = nullptr;
    FormField* m_nameField = nullptr;
};
