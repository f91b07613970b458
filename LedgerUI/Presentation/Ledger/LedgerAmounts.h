#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Reports/ReportFigure.h"
#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

/// The leg that an entry is shown by: where the money leaves, else the first. Null for an entry without legs.
const LedgerBook::Leg* leadingLeg(const LedgerBook& book, std::uint32_t at);

/// What the list shows of a leg: signed, except for money that only moves inside the company.
std::int64_t shownAmount(const LedgerBook& book, std::uint32_t at, const LedgerBook::Leg& leg);

/// Where a currency stands among those of the pickers; unknown ones behind all of them.
std::size_t pickerPlace(std::string_view code);

/// What a set of entries brought in one currency, in minor units; unset where a sum does not fit.
/// Transfers do not count, both legs of an exchange do, and a reversal takes back what its original brought.
struct LedgerTotal {
    std::string currency;
    std::optional<std::int64_t> incoming = 0;
    std::optional<std::int64_t> outgoing = 0; // negative
    std::optional<std::int64_t> net = 0;

    bool operator==(const LedgerTotal&) const = default;
};

/// One total for each currency that counts, in the order of the currency pickers.
std::vector<LedgerTotal> totals(const LedgerBook& book, std::span<const std::uint32_t> rows);

/// The total of a report's figure, of those of its legs whose entries are among `rows`: transfers count, and of an
/// exchange only the legs that the figure is about. The legs stand in the order of their entries.
LedgerTotal figureTotal(std::string currency, std::span<const ReportFigureLeg> legs,
                        std::span<const std::uint32_t> rows);
