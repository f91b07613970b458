#pragma once

#include <chrono>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include <QAbstractTableModel>

#include "LedgerUI/Presentation/Ledger/LedgerBook.h"
#include "LedgerUI/Presentation/Ledger/LedgerRow.h"

/// The ledger's table over one book. It holds only which entries stand where; what they look like is made when a row
/// comes into view. Entries keep their identity across books, so that selection and scroll survive a refresh.
class LedgerTableModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { date, entry, account, member, amount, columnCount_ };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows these entries of `book` in this order. Small changes are announced row by row, a new order as a layout,
    /// anything larger as a reset.
    void present(LedgerBookPointer book, std::vector<std::uint32_t> rows, std::chrono::year_month_day today);

    [[nodiscard]] const LedgerBook* book() const { return m_book.get(); }
    [[nodiscard]] const LedgerBookPointer& bookPointer() const { return m_book; }
    [[nodiscard]] const std::vector<std::uint32_t>& rows() const { return m_rows; }
    /// The place in the book of the entry that stands in `row`.
    [[nodiscard]] std::uint32_t entryAt(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    [[nodiscard]] const LedgerRow& row(int row) const;
    /// Whether the row above shows the same day.
    [[nodiscard]] bool repeatsDay(int row) const;
    /// For each entry of the book its row, or -1 where it is not shown.
    [[nodiscard]] std::vector<int> places() const;
    /// The row of the entry of this id, or -1.
    [[nodiscard]] int rowOf(std::string_view id) const;
    /// These rows as tab-separated text: whole days, plain minus signs, one line an entry.
    [[nodiscard]] QString copyText(const std::vector<int>& rows) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    /// For each row shown now where its entry stands in `book`; `LedgerBook::none` for an entry that is gone.
    [[nodiscard]] std::vector<std::uint32_t> carriedOver(const LedgerBook& book) const;
    void adopt(LedgerBookPointer book, std::vector<std::uint32_t> rows);
    bool reorder(const LedgerBookPointer& book, std::vector<std::uint32_t>& carried,
                 const std::vector<std::uint32_t>& places, std::vector<std::uint32_t>& rows);
    bool patch(const LedgerBookPointer& book, std::vector<std::uint32_t>& carried,
               const std::vector<std::uint32_t>& places, const std::vector<std::uint32_t>& rows);
    [[nodiscard]] QString text(int row, int column) const;
    [[nodiscard]] QString spoken(int row, int column) const;

    LedgerBookPointer m_book;
    std::vector<std::uint32_t> m_rows;
    std::chrono::year_month_day m_today{};
    mutable std::unordered_map<std::uint32_t, LedgerRow> m_made; // rows that were in view lately
};
