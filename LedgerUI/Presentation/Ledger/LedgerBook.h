#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Ledger/LedgerKeys.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

/// One snapshot made ready for browsing in one language: names looked up, search text folded, entries in order and
/// everything that filters ask turned into small numbers. Immutable, so that workers and screens may share it.
///
/// The next snapshot mostly differs in an entry or two: a book made after an earlier one takes from it whatever is
/// known of the entries that are the same, and says all the same what one made from the snapshot alone says.
class LedgerBook {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    struct Leg {
        std::uint32_t account = 0;  // of `accounts()`
        std::uint32_t currency = 0; // of `currencies()`
        std::int64_t amountMinor = 0;
    };

    /// The facts of one transaction, at the same place as in the snapshot.
    struct Entry {
        std::uint32_t day = 0; // 20261120; 0 for a date that names no day
        std::uint32_t kind = 0;
        std::uint32_t title = 0;
        std::uint32_t category = none;
        std::uint32_t member = 0;
        std::uint32_t firstLeg = 0;
        std::uint32_t legCount = 0;
        std::uint32_t textBegin = 0; // of the folded text that only this entry has
        std::uint32_t textEnd = 0;
        bool hasReceipts = false;
        bool isReversal = false;
        bool isInternal = false; // money moved inside the company only, as in a transfer
    };

    /// `before` may be any earlier book, or null.
    LedgerBook(SnapshotPointer snapshot, std::string locale, const LedgerBook* before = nullptr);

    [[nodiscard]] const LedgerSnapshot& snapshot() const { return *m_snapshot; }
    [[nodiscard]] const SnapshotPointer& snapshotPointer() const { return m_snapshot; }
    [[nodiscard]] const LedgerNames& names() const { return m_names; }
    [[nodiscard]] const std::string& locale() const { return m_names.locale(); }

    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] const Entry& entry(std::uint32_t at) const { return m_entries[at]; }
    [[nodiscard]] const LedgerTransaction& transaction(std::uint32_t at) const { return m_snapshot->transactions[at]; }
    [[nodiscard]] std::span<const Leg> legs(std::uint32_t at) const;
    /// Note, reference, participant and amounts, folded.
    [[nodiscard]] std::string_view text(std::uint32_t at) const;

    /// Every entry, newest day first and inside a day the last recorded first.
    [[nodiscard]] std::span<const std::uint32_t> order() const { return m_order; }
    /// Where the entry of this id stands, or `none`.
    [[nodiscard]] std::uint32_t find(std::string_view id) const;
    /// The refunds that name this income as their original.
    [[nodiscard]] std::span<const std::uint32_t> refundsOf(std::string_view id) const;

    /// How many entries each period holds.
    [[nodiscard]] const PeriodCounts& counts() const { return m_counts; }

    [[nodiscard]] const LedgerKeys& kinds() const { return m_kinds; }
    [[nodiscard]] const LedgerKeys& titles() const { return m_titles; }
    [[nodiscard]] const LedgerKeys& categories() const { return m_categories; }
    [[nodiscard]] const LedgerKeys& accounts() const { return m_accounts; }
    [[nodiscard]] const LedgerKeys& members() const { return m_members; }
    [[nodiscard]] const LedgerKeys& currencies() const { return m_currencies; }

private:
    /// Whether everything that entries are called by is as it was.
    [[nodiscard]] bool callsAllAs(const LedgerBook& before) const;
    void build();
    /// Where the entries of a book before stand in this one, and which are new or changed.
    struct Carried {
        std::vector<std::uint32_t> now;
        std::vector<std::uint32_t> fresh;
        std::vector<std::uint32_t> changed; // with the fresh ones
    };
    /// False when the book before knows things that are gone by now.
    bool continueFrom(const LedgerBook& before);
    std::optional<Carried> carryOver(const LedgerBook& before);
    void clear();
    void add(const LedgerTransaction& transaction);
    void addAs(const LedgerBook& before, std::uint32_t at);
    void addLegs(const LedgerTransaction& transaction, Entry& entry);
    void addText(const LedgerTransaction& transaction, Entry& entry);
    void index(const LedgerTransaction& transaction);
    std::uint32_t categoryNumber(const std::string& id);
    [[nodiscard]] bool isAskedAlike(std::uint32_t at, const LedgerBook& before, std::uint32_t beforeAt) const;
    [[nodiscard]] bool movesInside(std::uint32_t at) const;
    [[nodiscard]] bool comesBefore(std::uint32_t left, std::uint32_t right) const;
    void finish();

    SnapshotPointer m_snapshot;
    LedgerNames m_names;
    std::vector<Entry> m_entries;
    std::vector<Leg> m_legs;
    std::string m_text;
    std::vector<std::uint32_t> m_order;
    PeriodCounts m_counts;
    std::unordered_map<std::string_view, std::uint32_t> m_byID;
    std::unordered_map<std::string_view, std::vector<std::uint32_t>> m_refunds;
    LedgerKeys m_kinds;
    LedgerKeys m_titles;
    LedgerKeys m_categories;
    LedgerKeys m_accounts;
    LedgerKeys m_members;
    LedgerKeys m_currencies;
};

using LedgerBookPointer = std::shared_ptr<const LedgerBook>;
