#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"

namespace LedgerService {

class Connection;

/// An entry with its place among the company's changes.
struct RecordedEntry {
    std::int64_t sequence = 0;
    LedgerTransaction entry;
};

/// What decides who sees an entry, and how much of it.
struct EntrySight {
    std::string id;
    std::vector<std::string> accountIDs;
    bool isOfCapital = false;
    bool isOfDividends = false;
};

/// The posted entries. Rows are only ever added; `reversedBy` is found through the reversal that names the entry.
/// Beside the rows each entry is kept as snapshots show it, see `FragmentRepository`.
namespace EntryRepository {

/// The entry with its legs and receipts.
std::optional<LedgerTransaction> find(Connection& connection, std::string_view companyID, std::string_view entryID);

/// Of those among the ids that name entries, in any order.
std::vector<EntrySight> sights(Connection& connection, std::string_view companyID, std::span<const std::string> ids);

/// Every entry in the order of recording. `attachmentIDs` stay empty.
std::vector<LedgerTransaction> all(Connection& connection, std::string_view companyID);

/// Those recorded after `sequence` and up to `last`, with their receipts.
std::vector<RecordedEntry> between(Connection& connection, std::string_view companyID, std::int64_t sequence,
                                   std::int64_t last);

/// The id of the last entry recorded up to this change; empty when there is none.
std::string lastIDUpTo(Connection& connection, std::string_view companyID, std::int64_t change);

/// The entry's JSON as it was when it was recorded, whatever became of it since. Throws when there is no such entry.
std::string textAsRecorded(Connection& connection, std::string_view companyID, std::string_view entryID);

/// Writes the entry and its legs after all others of the company and links its receipts to it, as the next change. The
/// entry's JSON as it is kept.
std::string append(Connection& connection, std::string_view companyID, const LedgerTransaction& entry);

/// Links further receipts to a recorded entry, as the next change.
void linkReceipts(Connection& connection, std::string_view companyID, std::string_view entryID,
                  const std::vector<std::string>& attachmentIDs);

/// What refunds that are not reversed have paid back of the income, as positive amounts.
MinorByCurrency refunded(Connection& connection, std::string_view companyID, std::string_view originalID);

bool hasOpenRefunds(Connection& connection, std::string_view companyID, std::string_view originalID);

/// The accounts of the refunds that carry this reference, in whichever case, and are not reversed.
std::vector<std::string> accountsWithReference(Connection& connection, std::string_view companyID,
                                               std::string_view reference);

/// The openings of the account and currency that are not reversed.
std::vector<std::string> activeOpeningIDs(Connection& connection, std::string_view companyID,
                                          std::string_view accountID, std::string_view currency);

/// Whether any entry moves money on the account.
bool touches(Connection& connection, std::string_view companyID, std::string_view accountID);

/// The day of the company's earliest entry, whenever it was recorded.
std::optional<std::string> earliestDay(Connection& connection, std::string_view companyID);

}

}
