#pragma once

#include <string>
#include <utility>

#include "LedgerCore/Client/Errors/APIError.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

/// Small books that a store opens, and an entry that it sends.
namespace StoreSample {

inline const auto books = snapshot().account("bank", {"USD"}).grantAll().income("t1", "2026-11-01", "bank", "USD", 500);
/// The same with an entry that came since.
inline const auto newerBooks = SnapshotBuilder{books}.expense("t2", "2026-11-02", "bank", "USD", 100);

inline TransactionInput expense(std::string key = "key-1")
{
    TransactionInput input;
    input.kind = "expense";
    input.date = "2026-11-20";
    input.sourceAccountID = "bank";
    input.currency = "USD";
    input.amountMinor = 100;
    input.idempotencyKey = std::move(key);
    return input;
}

/// What people are told of this failure.
inline std::string message(int status, const std::string& code)
{
    return std::string{APIError{status, code, ""}.friendlyMessage("en-US")};
}

}
