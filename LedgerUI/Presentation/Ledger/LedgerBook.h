#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/EntryPlaces.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Ledger/LedgerKeys.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Ledger/SearchTexts.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

class ReportBook;

/// One snapshot made ready for browsing in one language: names looked up, search text folded, entries in order and
/// everything that filters ask turned into small numbers. Immutable, so that workers and screens may share it.
///
/// The next snapshot mostly has an entry or two more: a book made after an earlier one then goes on from what that one
/// knows, and says all the same what one made from the snapshot alone says.
class LedgerBook {
    struct Reports;

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

    [[nodiscard]] std::size_t size() const { return m_facts.entries.size(); }
    [[nodiscard]] const Entry& entry(std::uint32_t at) const { return m_facts.entries[at]; }
    [[nodiscard]] const LedgerTransaction& transaction(std::uint32_t at) const { return m_snapshot->transactions[at]; }
    [[nodiscard]] std::span<const Leg> legs(std::uint32_t at) const;
    /// Note, reference, participant and amounts, folded.
    [[nodiscard]] std::string_view text(std::uint32_t at) const { return m_texts->of(at); }
    /// For making them before somebody searches.
    [[nodiscard]] const std::shared_ptr<const SearchTexts>& texts() const { return m_texts; }

    /// Every entry, newest day first and inside a day the last recorded first.
    [[nodiscard]] std::span<const std::uint32_t> order() const { return m_facts.order; }
    /// Where the entry of this id stands, or `none`.
    [[nodiscard]] std::uint32_t find(std::string_view id) const;
    /// The refunds that name this income as their original.
    [[nodiscard]] std::vector<std::uint32_t> refundsOf(std::string_view id) const;
    /// Whether every entry of `earlier` stands at the same place here, as far as that is known without looking.
    [[nodiscard]] bool keepsPlacesOf(const LedgerBook& earlier) const
    {
        return m_facts.origin == earlier.m_facts.origin;
    }

    /// The same books laid out for reports, when first asked for; null when no report can be made of them.
    [[nodiscard]] const ReportBook* reports() const;

    /// How many entries each period holds.
    [[nodiscard]] const PeriodCounts& counts() const { return m_counts; }

    [[nodiscard]] const LedgerKeys& kinds() const { return m_facts.kinds; }
    [[nodiscard]] const LedgerKeys& titles() const { return m_facts.titles; }
    [[nodiscard]] const LedgerKeys& categories() const { return m_facts.categories; }
    [[nodiscard]] const LedgerKeys& accounts() const { return m_facts.accounts; }
    [[nodiscard]] const LedgerKeys& members() const { return m_facts.members; }
    [[nodiscard]] const LedgerKeys& currencies() const { return m_facts.currencies; }

private:
    struct Refund {
        std::uint32_t income = 0;
        std::uint32_t refund = 0;

        auto operator<=>(const Refund&) const = default;
    };

    /// All that is told of the entries. It points nowhere, so the next book can take it over.
    struct Facts {
        std::shared_ptr<const int> origin; // the same for all that went on from one another
        std::vector<Entry> entries;
        std::vector<Leg> legs;
        std::vector<std::uint32_t> order;
        EntryPlaces places;
        std::vector<Refund> refunds;         // ascending
        std::vector<std::uint32_t> unlinked; // reversals and refunds whose original is not in sight
        LedgerKeys kinds;
        LedgerKeys titles;
        std::vector<std::uint32_t> titlesOfCategories; // by the category's number; `none` where not yet needed
        LedgerKeys categories;
        LedgerKeys accounts;
        LedgerKeys members;
        LedgerKeys currencies;
    };

    /// Whether everything that entries are called by is as it was.
    [[nodiscard]] bool callsAllAs(const LedgerBook& before) const;
    /// The entries that got other links; nothing when more has changed than that and what follows at the end.
    [[nodiscard]] std::optional<std::vector<std::uint32_t>> relinkedSince(const LedgerBook& before) const;
    bool continueFrom(const LedgerBook& before);
    void build();
    void add(const LedgerTransaction& transaction, Entry& entry);
    void addLegs(const LedgerTransaction& transaction, Entry& entry);
    std::uint32_t categoryNumber(const std::string& id);
    std::uint32_t titleNumber(const LedgerTransaction& transaction, const Entry& entry);
    void link(std::uint32_t at);
    [[nodiscard]] bool movesInside(std::uint32_t at) const;
    [[nodiscard]] bool comesBefore(std::uint32_t left, std::uint32_t right) const;
    [[nodiscard]] std::vector<std::uint32_t> inOrderFrom(std::uint32_t first) const;
    void putInOrder(std::uint32_t first);
    void finish(std::uint32_t first);

    SnapshotPointer m_snapshot;
    LedgerNames m_names;
    Facts m_facts;
    std::shared_ptr<const SearchTexts> m_texts;
    PeriodCounts m_counts;
    std::shared_ptr<Reports> m_reports;
};

using LedgerBookPointer = std::shared_ptr<const LedgerBook>;
