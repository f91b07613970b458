#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Accounts/AccountListing.h"
#include "LedgerUI/Presentation/Accounts/SetupChecklist.h"

class EmptyState;
class QAbstractButton;

/// In place of an empty table of accounts: why it is empty, and what can be done about it.
class AccountNoticeView final : public QWidget {
    Q_OBJECT
public:
    explicit AccountNoticeView(QWidget* parent = nullptr);

    /// `setup` are the steps that lead to the first account, where there are any.
    void present(const AccountNotice& notice, const std::optional<SetupChecklist>& setup);
    void presentWaiting(const QString& text);

Q_SIGNALS:
    void remedyWanted(AccountNotice::Remedy remedy);
    void stepWanted(const PageLink& link);

private:
    void replace(EmptyState* state);
    void addSteps(EmptyState* state, const SetupChecklist& setup);

    EmptyState* m_state = nullptr;
};
