#pragma once

#include <exception>
#include <stdexcept>
#include <string>

namespace LedgerService {

/// Thrown when other writers hold the database for too long. Nothing was written.
struct DatabaseBusy : std::runtime_error {
    DatabaseBusy() : std::runtime_error("others are writing for too long") {}
};

/// Thrown when the server that keeps the database cannot be reached. Nothing was written.
struct DatabaseUnreachable : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Thrown when the server was lost at the end of a transaction: it may have been kept, and may not.
struct CommitUnknown : std::runtime_error {
    CommitUnknown() : std::runtime_error("the server was lost before it said whether it has kept the transaction") {}
};

namespace DatabaseFailure {

/// What failed, fit for a log: the database library's own words would repeat the values of the statement.
std::string words(const std::exception& failure);

/// Whether the database was only held by others.
bool isBusy(const std::exception& failure);

/// Whether the disk has no room for what was to be written. Nothing was.
bool isFull(const std::exception& failure);

/// Whether the server that keeps the database was not there, or no longer. What was not committed is not written.
bool isOutOfReach(const std::exception& failure);

/// Whether the database gave the transaction up in favour of another: done again as a whole, it may well succeed.
bool isConflict(const std::exception& failure);

}

}
