#pragma once

#include "LedgerUI/Components/Table/RowTable.h"
#include "LedgerUI/Presentation/Accounts/AccountListing.h"

class AccountTableModel;

/// The accounts in their groups, one line per currency. One line can be chosen.
class AccountTable final : public RowTable {
    Q_OBJECT
public:
    explicit AccountTable(QWidget* parent = nullptr);

    void present(const AccountListingPointer& listing);
    void retranslate();

    /// The chosen line of the book; nothing while none is chosen.
    [[nodiscard]] const AccountBook::Line* chosen() const;

Q_SIGNALS:
    void nameHeadPressed();
    /// The head of the balances: below it the currencies are to be offered.
    void balanceHeadPressed(QPoint below);

protected:
    void layOut() override;

private:
    explicit AccountTable(AccountTableModel* model, QWidget* parent);
    void presentSort();

    AccountTableModel* m_model;
};
