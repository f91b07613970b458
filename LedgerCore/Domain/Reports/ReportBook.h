#pragma once

#include <chrono>
#include <cstdint>
#include <expected>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Reports/FundMovements.h"
#include "LedgerCore/Domain/Reports/Report.h"
#include "LedgerCore/Domain/Reports/ReportFigure.h"
#include "LedgerCore/Domain/Reports/ReportSource.h"

/// The movements of a snapshot laid out for reports: built once in one pass over the entries, after which each report
/// is one pass over the legs of its currency, however many periods it has. Points into the snapshot, which must
/// outlive it. Safe to read from several threads.
class ReportBook {
public:
    /// Fails when an entry bears no valid day or the amounts of a currency could overflow a sum.
    static std::expected<ReportBook, ReportError> create(const LedgerSnapshot& snapshot);
    static std::expected<ReportBook, ReportError> create(const LedgerSnapshot&& snapshot) = delete;
    static std::expected<ReportBook, ReportError> create(const ReportSource& source);
    static std::expected<ReportBook, ReportError> create(const ReportSource&& source) = delete;

    /// The currencies that accounts hold or entries moved, by code.
    [[nodiscard]] std::vector<std::string> currencies() const;

    [[nodiscard]] std::expected<Report, ReportError> report(ReportScope scope,
                                                            const std::vector<ReportRange>& ranges) const;

    [[nodiscard]] std::expected<ReportAccountMatrix, ReportError> matrix(ReportScope scope,
                                                                         std::vector<ReportRange> ranges) const;

    [[nodiscard]] std::expected<ReportDailyBalances, ReportError> dailyBalances(const ReportScope& scope,
                                                                                ReportRange range) const;

    /// What moved in `range` without being income or expense, and what was taken back of these.
    [[nodiscard]] FundMovements fundMovements(ReportScope scope, ReportRange range) const;

    /// The legs in `range` that the figure is the sum of, in snapshot order.
    [[nodiscard]] std::vector<ReportFigureLeg> legs(const ReportFigure& figure, ReportRange range) const;

    /// One leg on an account of the snapshot. The category is that of the entry, for a refund that of the income
    /// refunded; a reversal bears the movement and category of what it undoes.
    struct Row {
        std::int64_t amountMinor = 0;
        std::int32_t day = 0;       // since 1970-01-01
        std::uint32_t entry = 0;    // position in the snapshot
        std::uint32_t account = 0;  // position in the snapshot
        std::uint32_t category = 0; // position in `m_categories`
        Movement movement = Movement::other;
        bool reverses = false;

        /// Whether it is income or expense as it was booked, rather than a movement of funds.
        [[nodiscard]] bool isEarnedOrSpent() const
        {
            return !reverses && (movement == Movement::income || movement == Movement::expense);
        }
    };

private:
    struct CategorySlot {
        std::string_view id;   // empty for the first slot, the money of no category
        std::uint32_t top = 0; // the uppermost category above it; its own position for a top-level one
    };
    template <class Entry>
    class Builder;

    explicit ReportBook(const std::vector<Account>& accounts) : m_accounts(&accounts) {}

    template <class Snapshot>
    static std::expected<ReportBook, ReportError> laidOut(const Snapshot& snapshot);

    [[nodiscard]] const std::vector<Row>& rows(std::string_view currency) const;
    [[nodiscard]] std::vector<bool> accountsInScope(const ReportScope& scope) const;
    [[nodiscard]] std::vector<bool> categoriesOf(const ReportFigure& figure) const;
    class CategorySums;

    const std::vector<Account>* m_accounts;
    std::vector<CategorySlot> m_categories;
    std::map<std::string, std::vector<Row>, std::less<>> m_rows; // by currency, in snapshot order
};
