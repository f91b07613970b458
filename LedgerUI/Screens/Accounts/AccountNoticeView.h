#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Accounts/AccountListing.h"

class EmptyState;
class QAbstractButton;

/// In place of an empty table of accounts: why it is empty, and what can be done about it.
class AccountNoticeView final : public QWidget {
    Q_OBJECT
public:
    explicit AccountNoticeView(QWidget* parent = nullptr);

    void present(const AccountNotice& notice);
    void presentWaiting(const QString& text);

Q_SIGNALS:
    void remedyWanted(AccountNotice::Remedy remedy);

private:
    void replace(EmptyState* state);

    EmptyState* m_state = nullptr;
};
