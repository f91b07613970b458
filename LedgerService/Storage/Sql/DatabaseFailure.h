#pragma once

#include <exception>
#include <stdexcept>
#include <string>

namespace LedgerService {

/// Thrown when other writers hold the database for too long. Nothing was written.
struct DatabaseBusy : std::runtime_error {
    DatabaseBusy() : std::runtime_error("others are writing for too long") {}
};

namespace DatabaseFailure {

/// What failed, fit for a log: the database library's own words would repeat the values of the statement.
std::string words(const std::exception& failure);

/// Whether the database was only held by others.
bool isBusy(const std::exception& failure);

}

}
