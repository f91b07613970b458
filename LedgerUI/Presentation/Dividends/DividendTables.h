#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"

/// What became of an advance, in minor units: advance = applied + returned + remaining.
struct AdvanceStanding {
    std::int64_t applied = 0;
    std::int64_t returned = 0;
    std::int64_t remaining = 0;
};

/// The dividends of one currency as tables tell them, on screen and on paper, as they stood at the end of a day. Points
/// into the snapshot, which must outlive it.
class DividendTables {
public:
    using Movements = std::vector<const DividendMovement*>;

    /// Nothing where the records break a rule. Without a day, everything counts.
    static std::optional<DividendTables> create(const LedgerSnapshot& snapshot, std::string_view currency,
                                                std::optional<std::string_view> throughDay, std::string_view locale);

    [[nodiscard]] const DividendState& state() const { return m_state; }
    [[nodiscard]] const DividendBook& book() const { return m_book; }
    [[nodiscard]] std::string_view currency() const { return m_currency; }
    [[nodiscard]] std::string_view locale() const { return m_locale; }

    [[nodiscard]] QString word(std::string_view key) const;
    [[nodiscard]] QString money(std::int64_t minor) const;
    [[nodiscard]] RecordCell amount(std::int64_t minor) const;
    [[nodiscard]] QString nameOf(std::string_view participantID) const;
    /// Whether the allocation did not count on the day of the tables.
    [[nodiscard]] bool isCancelled(const DividendBatch& batch) const { return !m_batches.contains(batch.id); }
    /// Whether the movement was reversed by the day of the tables.
    [[nodiscard]] bool isUndone(const DividendMovement& movement) const;
    /// The movement that a reversal undoes; null for others.
    [[nodiscard]] const DividendMovement* undone(const DividendMovement& movement) const;
    /// The same, or the movement itself.
    [[nodiscard]] const DividendMovement& original(const DividendMovement& movement) const;

    [[nodiscard]] DividendLineSummary sumOf(const DividendBatch& batch) const;
    /// "Cancelled", "Settled", "62 % settled".
    [[nodiscard]] QString standingOf(const DividendBatch& batch) const;
    [[nodiscard]] AdvanceStanding standingOf(const DividendMovement& advance) const;

    /// The lines of an allocation with their sums.
    [[nodiscard]] RecordRows lines(const DividendBatch& batch) const;
    /// What is payable of a line, or that it is settled.
    [[nodiscard]] RecordCell unpaidCell(std::int64_t minor, bool isCancelled) const;
    [[nodiscard]] RecordRows advances(const Movements& movements) const;
    /// A row with day, title and amount for each.
    [[nodiscard]] RecordRows movements(const Movements& movements) const;
    /// What rows have no room for: that set-offs move no money, and what became of reversed ones.
    [[nodiscard]] QString notesOn(const Movements& movements) const;

private:
    DividendTables(const LedgerSnapshot& snapshot, const DividendState& state, DividendBook book,
                   std::string_view currency, std::optional<std::string_view> throughDay, std::string_view locale);
    [[nodiscard]] RecordRow advanceRow(const DividendMovement& advance) const;

    const LedgerSnapshot& m_snapshot;
    const DividendState& m_state;
    DividendBook m_book;
    std::string m_currency;
    std::optional<std::string> m_throughDay;
    std::string m_locale;
    std::unordered_set<std::string_view> m_batches;                            // those that count
    std::unordered_map<std::string_view, const DividendMovement*> m_movements; // by id
    std::unordered_map<std::string_view, AdvanceStanding> m_advances;          // by id
};
