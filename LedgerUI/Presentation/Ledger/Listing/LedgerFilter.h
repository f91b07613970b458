#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerCore/Domain/Reports/ReportFigure.h"
#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

/// Which entries the ledger shows. The parts narrow each other; inside one part any choice will do, and a part
/// without a choice lets everything through.
struct LedgerFilter {
    enum class Part {
        period,
        text,
        kinds,
        accounts,
        categories,
        currencies,
        receipts,
        members,
        amounts,
        standings,
        figure,
        selection
    };
    enum class Receipts { any, attached, missing };
    /// What an entry moves, whichever way: hundredths of a unit of each currency, bounds included.
    struct Amounts {
        std::optional<std::int64_t> least = {};
        std::optional<std::int64_t> most = {};

        bool operator==(const Amounts&) const = default;
    };
    using Choices = std::set<std::string, std::less<>>;

    Period period = Period::allTime();
    std::string text = {}; // as typed
    Choices kinds = {};    // as `displayKind` tells them
    Choices accountIDs = {};
    Choices categoryIDs = {}; // a parent stands for its children too
    Choices currencies = {};
    Receipts receipts = Receipts::any;
    Choices memberIDs = {}; // who recorded it
    Amounts amounts = {};
    Choices standings = {};                               // of `LedgerStandings`
    std::optional<ReportFigure> figure = {};              // only what this figure of a report is the sum of
    std::optional<SharedList<std::string>> entryIDs = {}; // only those that a person has selected

    bool operator==(const LedgerFilter&) const = default;

    [[nodiscard]] bool isSet(Part part) const;
    [[nodiscard]] LedgerFilter without(Part part) const;
    /// Whether anything but the period narrows the ledger.
    [[nodiscard]] bool narrows() const;

    /// The parts that have a button of their own, in the order in which the page shows them.
    static constexpr std::array chosenParts{Part::kinds, Part::accounts, Part::categories, Part::currencies,
                                            Part::receipts};
    /// All that one list of filters offers, those among them.
    static constexpr std::array listedParts{Part::kinds,    Part::accounts, Part::categories, Part::currencies,
                                            Part::receipts, Part::members,  Part::amounts,    Part::standings};
    /// Those of them that have no button.
    static constexpr std::array furtherParts{Part::members, Part::amounts, Part::standings};
};

/// What can be asked about how entries stand; of several, one is enough.
namespace LedgerStandings {
inline constexpr std::string_view inForce = "inForce";         // neither reversed nor a reversal
inline constexpr std::string_view reversed = "reversed";       // what was taken back
inline constexpr std::string_view reversals = "reversals";     // what takes something back
inline constexpr std::string_view ownByOthers = "ownByOthers"; // reversals by others of what the member had recorded
inline constexpr std::array all{inForce, reversed, reversals, ownByOthers};
}

/// The entries that pass, in the book's own order.
std::vector<std::uint32_t> matching(const LedgerBook& book, const LedgerFilter& filter);

/// The legs that the filter's figure is the sum of, entries as the book counts them; none without a figure.
std::vector<ReportFigureLeg> figureLegs(const LedgerBook& book, const LedgerFilter& filter);

/// Which part, once dropped, brings back the most entries.
struct LedgerBlockingPart {
    LedgerFilter::Part part = LedgerFilter::Part::text;
    std::size_t entries = 0; // what it would show then

    bool operator==(const LedgerBlockingPart&) const = default;
};
/// For a filter that nothing passes: the part to drop, or nothing when no single one helps.
std::optional<LedgerBlockingPart> blockingPart(const LedgerBook& book, const LedgerFilter& filter);
