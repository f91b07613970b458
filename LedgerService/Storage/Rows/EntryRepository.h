#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"

namespace LedgerService {

class Connection;

/// The posted entries. Rows are only ever added; `reversedBy` is found through the reversal that names the entry.
namespace EntryRepository {

/// The entry with its legs and receipts.
std::optional<LedgerTransaction> find(Connection& connection, std::string_view companyID, std::string_view entryID);

/// Every entry in the order of recording. `attachmentIDs` stay empty.
std::vector<LedgerTransaction> all(Connection& connection, std::string_view companyID);

/// Those that touch one of the accounts, whole, in the order of recording. `attachmentIDs` stay empty.
std::vector<LedgerTransaction> touching(Connection& connection, std::string_view companyID,
                                        std::span<const std::string> accountIDs);

/// Writes the entry and its legs after all others of the company.
void append(Connection& connection, std::string_view companyID, const LedgerTransaction& entry);

/// What refunds that are not reversed have paid back of the income, as positive amounts.
MinorByCurrency refunded(Connection& connection, std::string_view companyID, std::string_view originalID);

bool hasOpenRefunds(Connection& connection, std::string_view companyID, std::string_view originalID);

/// Whether a refund that is not reversed carries this reference.
bool isReferenceUsed(Connection& connection, std::string_view companyID, std::string_view reference);

/// The openings of the account and currency that are not reversed.
std::vector<std::string> activeOpeningIDs(Connection& connection, std::string_view companyID,
                                          std::string_view accountID, std::string_view currency);

}

}
