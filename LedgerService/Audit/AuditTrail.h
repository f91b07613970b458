#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerService/Audit/AuditRecord.h"

namespace LedgerService {

class Connection;

/// Which records are looked for; what is empty does not matter.
struct AuditFilter {
    std::string memberID;
    std::string kind;
    std::string record;
    std::string day;        // "YYYY-MM-DD", UTC
    std::int64_t below = 0; // only records with a lower number, 0: from the last one on
    int limit = 100;
};

/// Records from the last to the first.
struct AuditPage {
    std::vector<AuditRecord> records;
    std::int64_t next = 0; // where the next page begins (`below`); 0 after the first record
};

/// The audit trail of a scope: a company's id, or an empty text for what concerns no company. Each record's chain
/// covers all records before it: none can be changed, left out or put in afterwards without all later ones being made
/// anew.
namespace AuditTrail {

/// Bytes that are kept of what stood before, and of what stands after; of what is longer, its size and a digest.
inline constexpr std::size_t mostTold = std::size_t{16} << 10;

/// Adds the record as the scope's next; expects the writing transaction of what it tells. Number and chain are set
/// here.
void append(Connection& connection, std::string_view scope, AuditRecord record);

/// The chain that this record makes of the one before.
std::string chained(std::string_view previous, std::string_view scope, const AuditRecord& record);

/// The digest of an entry as it is recorded: not reversed yet, with the receipts of its command.
std::string digestOf(const LedgerTransaction& entry);
std::string digestOf(std::string_view entryText);

/// What the filter finds in the next few ten thousand records: a page may be short although others follow.
AuditPage page(Connection& connection, std::string_view scope, const AuditFilter& filter);

/// The last record up to this stamp; nothing when there is none.
std::optional<AuditRecord> lastUpTo(Connection& connection, std::string_view scope, std::string_view stamp);

/// All records in their order, so many after a number.
std::vector<AuditRecord> after(Connection& connection, std::string_view scope, std::int64_t number, int limit);

/// All scopes that have records.
std::vector<std::string> scopes(Connection& connection);

/// From now on every entry of the company has a record; expects the writing transaction that founds the company.
void begin(Connection& connection, std::string_view companyID);

}

}
