#pragma once

#include <span>
#include <string_view>

#include "LedgerCore/Domain/Records/Requests/TransactionColorSelection.h"
#include "LedgerCore/Domain/Text/CatalogNames.h"

struct LedgerSnapshot;

/// A colour that the entries of a kind can be shown in.
struct TransactionColorOption {
    std::string_view id; // what `Company::transactionColors` and `Member::transactionColors` hold
    CatalogNames names;
    std::string_view lightHex; // "#RRGGBB", for light and for dark grounds
    std::string_view darkHex;
};

/// The colours on offer, and which of them a kind of entry has.
namespace TransactionColorOptions {

/// In the order in which they are offered.
std::span<const TransactionColorOption> all();

/// Null for an id that the palette does not hold.
const TransactionColorOption* find(std::string_view id);

/// Whether there is such a kind of entry and such a colour.
bool isChoice(const TransactionColorSelection& selection);

/// What the current member chose for the kind, else what the company did, else the kind's own colour. A choice that the
/// palette does not hold counts as none.
const TransactionColorOption& of(std::string_view kind, const LedgerSnapshot& snapshot);

}
