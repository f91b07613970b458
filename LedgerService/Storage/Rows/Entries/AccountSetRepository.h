#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"

namespace LedgerService {

class Connection;

/// Accounts that entries touch together. Who may see an entry follows from its set alone, so that entries need not be
/// looked into to leave out those that a member may not see, nor to count the others. There are few sets, even of many
/// entries.
struct AccountSet {
    int id = 0; // within the company, from 1
    std::vector<std::string> accountIDs;
    std::int64_t entryCount = 0;
    std::int64_t receiptCount = 0; // linked to these entries

    bool operator==(const AccountSet&) const = default;
};

namespace AccountSetRepository {

/// What is new of an entry.
struct Counted {
    int entries = 0;
    std::size_t receipts = 0;
};

/// Counts what is new of an entry in the set of the accounts that it touches, which is made now if it is new, and gives
/// the set's id.
int count(Connection& connection, std::string_view companyID, const LedgerTransaction& entry, Counted counted);

std::vector<AccountSet> all(Connection& connection, std::string_view companyID);

/// The accounts of one set; none when there is no such set.
std::vector<std::string> accountIDs(Connection& connection, std::string_view companyID, int setID);

void removeAll(Connection& connection, std::string_view companyID);

}

}
