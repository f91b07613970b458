#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"

namespace LedgerService {

class Connection;

/// One entry as it stands in snapshots: encoded when it is recorded, and again when it is reversed or given receipts.
struct EntryFragment {
    std::int64_t sequence = 0;
    int accountSet = 0; // who sees it
    std::string text;   // the entry's JSON
};

/// The fragments of a company in the order of recording. A renewed fragment leaves its earlier text, so that a state
/// that somebody is still reading does not change under the reader.
namespace FragmentRepository {

/// The keys that the fragments of the company lie between, the last one included.
struct KeyRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};
KeyRange keysOf(std::int64_t companyNumber);

/// What fragments are made of: differs as soon as an entry is encoded in another way.
std::string shape();

std::string insert(Connection& connection, const CompanyState& state, int accountSet, std::int64_t sequence,
                   const LedgerTransaction& entry);

/// Encodes the entry anew, as it stands from `state.lastChange` on.
void renew(Connection& connection, std::string_view companyID, const CompanyState& state, std::int64_t sequence,
           const LedgerTransaction& entry);

std::optional<EntryFragment> find(Connection& connection, const CompanyState& state, std::int64_t sequence);

/// False: no more are to be shown.
using Visitor = std::function<bool(const EntryFragment&)>;
/// Shows up to `limit` fragments after `sequence`, none after `last`; whether there may be more.
bool visit(Connection& connection, const CompanyState& state, std::int64_t sequence, std::int64_t last, int limit,
           const Visitor& visitor);

/// The entries up to `change` whose fragments were renewed since, in order.
std::vector<std::int64_t> renewedSince(Connection& connection, std::string_view companyID, std::int64_t change);

/// What the fragments renewed since `change` said then, by sequence.
std::unordered_map<std::int64_t, std::string> textsBefore(Connection& connection, std::string_view companyID,
                                                          std::int64_t change);

/// One renewal of an entry's fragment.
struct EntryRenewal {
    std::int64_t sequence = 0; // of the entry
    std::int64_t change = 0;   // that renewed it
    std::string textBefore;
    std::int64_t reversedAt = 0; // the change that reversed the entry; 0 while none did
};

/// The renewals of the entries after `sequence` and up to `last`, by entry.
std::vector<EntryRenewal> renewals(Connection& connection, std::string_view companyID, std::int64_t sequence,
                                   std::int64_t last);

/// What the entry said when it was recorded; nothing when it has not been renewed since.
std::optional<std::string> textAtFirst(Connection& connection, std::string_view companyID, std::int64_t sequence);

void removeAll(Connection& connection, std::string_view companyID, const CompanyState& state);

}

}
