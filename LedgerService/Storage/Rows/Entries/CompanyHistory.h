#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace LedgerService {

class Connection;

/// Where a company stands.
struct CompanyState {
    std::int64_t number = 0;     // of the company within this database
    std::int64_t lastChange = 0; // grows with every change to what any member may see
    int settingsRevision = 0;
};

/// Every accepted change takes the next number of its company. An entry's sequence is the number of the change that
/// recorded it.
namespace CompanyHistory {

std::optional<CompanyState> state(Connection& connection, std::string_view companyID);

/// Takes the next number; expects a writing transaction and a company that exists.
CompanyState advance(Connection& connection, std::string_view companyID);

/// The same for an entry of this day, which counts for the company's earliest day.
CompanyState advanceByEntry(Connection& connection, std::string_view companyID, std::string_view day);

/// Takes the next number unless the company has gone on since it stood at `lastChange`.
void ensureAdvanced(Connection& connection, std::string_view companyID, std::int64_t lastChange);

}

}
