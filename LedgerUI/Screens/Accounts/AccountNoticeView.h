#pragma once

#include "LedgerUI/Components/Table/NoticeView.h"
#include "LedgerUI/Presentation/Accounts/AccountListing.h"
#include "LedgerUI/Presentation/Accounts/SetupChecklist.h"

class EmptyState;
class QAbstractButton;

/// In place of an empty table of accounts: why it is empty, and what can be done about it.
class AccountNoticeView final : public NoticeView {
    Q_OBJECT
public:
    explicit AccountNoticeView(QWidget* parent = nullptr);

    /// `setup` are the steps that lead to the first account, where there are any.
    void present(const AccountNotice& notice, const std::optional<SetupChecklist>& setup);

Q_SIGNALS:
    void remedyWanted(AccountNotice::Remedy remedy);
    void stepWanted(const PageLink& link);

private:
    void addSteps(EmptyState* state, const SetupChecklist& setup);
};
