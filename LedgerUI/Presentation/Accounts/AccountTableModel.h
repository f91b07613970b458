#pragma once

#include "LedgerUI/Presentation/Accounts/AccountListing.h"
#include "LedgerUI/Presentation/Table/RowModel.h"

/// The table of accounts over one listing.
class AccountTableModel final : public RowModel {
    Q_OBJECT
public:
    enum Column { account, currency, incoming, outgoing, balance, columnCount_ };

    using RowModel::RowModel;

    void present(AccountListingPointer listing);

    [[nodiscard]] const AccountListingPointer& listing() const { return m_listing; } // null until the first one
    [[nodiscard]] const AccountRow& row(int row) const { return m_rows[static_cast<std::size_t>(row)]; }

    [[nodiscard]] std::string_view idAt(int row) const override { return this->row(row).id; }
    [[nodiscard]] int rowOf(std::string_view id) const override { return m_listing ? m_listing->rowOf(id) : -1; }
    [[nodiscard]] bool isHeadAt(int row) const override { return this->row(row).isHead; }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

protected:
    void drop(const RowChange::Range& rows) override;
    void adopt(const RowChange& change) override;
    void insert(const RowChange::Range& rows) override;

private:
    [[nodiscard]] QString text(const AccountRow& row, int column) const;
    [[nodiscard]] QString spoken(const AccountRow& row, int column) const;

    AccountListingPointer m_listing;
    AccountListingPointer m_next; // while a change is announced
    std::vector<AccountRow> m_rows;
};
