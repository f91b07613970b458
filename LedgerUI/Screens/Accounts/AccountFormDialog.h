#pragma once

#include <optional>
#include <string>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Accounts/AccountForm.h"

class AccountFormBody;

/// Makes an account, or changes one. Deletes itself when it closes; open it with `open()` over its window.
class AccountFormDialog final : public CommandForm {
    Q_OBJECT
public:
    AccountFormDialog(LedgerStore& store, AccountSubject subject, QWidget* parent);

    /// Where the keys begin.
    void beginWith(AccountField field) { m_first = field; }

Q_SIGNALS:
    /// The account is made or changed, and the form about to close. The id is empty when nobody can tell it.
    void saved(const QString& accountID, const QString& sentence);

private:
    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void edit(AccountField field, const std::function<void(AccountDraft&)>& change);
    void submit();
    /// The command that is to be sent, unless something is wrong, which is said then, or nothing has changed.
    std::optional<AccountCommand> checked();
    void send(const AccountCommand& command);
    void finish(const Result<void>& reply);

    AccountSubject m_subject;
    AccountSubmission m_submission;
    AccountField m_first = AccountField::name;
    AccountFormBody* m_body = nullptr;
};
