#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "LedgerUI/Presentation/Ledger/Rows/LedgerDayRow.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerRow.h"
#include "LedgerUI/Presentation/Table/RowModel.h"

/// The ledger's table over one listing: its entries, with a head before each day where they are grouped. What a row
/// looks like is made when it comes into view.
class LedgerTableModel final : public RowModel {
    Q_OBJECT
public:
    enum Column { date, entry, account, member, amount, balance, columnCount_ };

    using RowModel::RowModel;

    /// Shows the listing, which came from the one shown by `change`.
    void present(LedgerListingPointer listing, const RowChange& change);

    [[nodiscard]] const LedgerListingPointer& listing() const { return m_listing; } // null until the first one
    [[nodiscard]] const LedgerBook* book() const { return m_listing ? m_listing->book.get() : nullptr; }
    [[nodiscard]] const std::vector<LedgerLine>& lines() const { return m_lines; }
    [[nodiscard]] bool isHeadAt(int row) const override { return lineAt(row).isHead(); }
    /// The head that stands in `row`.
    [[nodiscard]] const LedgerDayRow& dayRow(int row) const;
    /// The place in the book of the entry that stands in `row`, which is no head.
    [[nodiscard]] std::uint32_t entryAt(int row) const { return lineAt(row).entry(); }
    [[nodiscard]] const LedgerRow& row(int row) const;
    /// Whether the row above shows the day of this entry.
    [[nodiscard]] bool repeatsDay(int row) const;
    /// Whether the last column is there: what was on the one chosen account after each entry.
    [[nodiscard]] bool hasBalances() const { return m_hasBalances; }
    [[nodiscard]] std::vector<MoneyText> balancesAt(int row) const;
    /// These rows as tab-separated text under the names of what stands in them: whole days, plain minus signs, one line
    /// per entry.
    [[nodiscard]] QString copyText(const std::vector<int>& rows) const;

    [[nodiscard]] std::string_view idAt(int row) const override;
    [[nodiscard]] int rowOf(std::string_view id) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

protected:
    void drop(const RowChange::Range& rows) override;
    void adopt(const RowChange& change) override;
    void insert(const RowChange::Range& rows) override;

private:
    [[nodiscard]] LedgerLine lineAt(int row) const { return m_lines[static_cast<std::size_t>(row)]; }
    [[nodiscard]] std::uint32_t dayAt(int row) const;
    [[nodiscard]] QString text(int row, int column) const;
    [[nodiscard]] QString spoken(int row, int column) const;
    void presentBalances(bool areThere);
    void forgetMade();

    LedgerListingPointer m_listing;
    std::string m_today; // of the listing
    bool m_hasBalances = false;
    LedgerListingPointer m_next; // while a change is announced
    std::vector<LedgerLine> m_lines;
    mutable std::unordered_map<std::uint32_t, LedgerRow> m_made; // rows that were in view lately
    mutable std::unordered_map<std::uint32_t, LedgerDayRow> m_madeDays;
};
