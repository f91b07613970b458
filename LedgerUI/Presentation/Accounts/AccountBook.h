#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// The accounts of one snapshot with what its entries say about them as seen on one day: worked out in one pass over
/// the entries and immutable, so that a worker can make it. Says nothing in any language.
class AccountBook {
public:
    using Minor = std::optional<std::int64_t>; // unset where it is not known

    /// A month of the past year, the last one that of today.
    static constexpr std::size_t months = 12;
    static constexpr std::size_t latestKept = 5;

    struct Movement {
        std::uint32_t entry = 0; // of the snapshot
        std::int64_t amountMinor = 0;
    };

    /// An account in one of its currencies.
    struct Line {
        std::uint32_t account = 0; // of the snapshot
        std::string currency;
        std::int64_t balance = 0;
        // Of the current month. An opening balance says what was there before, and counts as neither.
        Minor incoming = 0;
        Minor outgoing = 0; // below zero
        /// At the end of each month, oldest first; unset where the visible entries do not explain the balance of now.
        std::optional<std::array<std::int64_t, months>> monthEnds{};
        std::vector<Movement> latest{}; // newest first, at most `latestKept`
        std::optional<Movement> opening{};
        OpeningBalanceEligibility eligibility{};
    };

    AccountBook(SnapshotPointer snapshot, std::chrono::year_month_day today);

    [[nodiscard]] const LedgerSnapshot& snapshot() const { return *m_snapshot; }
    [[nodiscard]] const SnapshotPointer& snapshotPointer() const { return m_snapshot; }
    [[nodiscard]] std::chrono::year_month_day today() const { return m_today; }
    /// Those of one account stand together, in the order of the snapshot.
    [[nodiscard]] const std::vector<Line>& lines() const { return m_lines; }
    [[nodiscard]] const Account& account(const Line& line) const { return m_snapshot->accounts[line.account]; }
    /// The line of this account and currency, or null.
    [[nodiscard]] const Line* line(std::string_view accountID, std::string_view currency) const;

private:
    class Builder;

    SnapshotPointer m_snapshot;
    std::chrono::year_month_day m_today;
    std::vector<Line> m_lines;
};

using AccountBookPointer = std::shared_ptr<const AccountBook>;
