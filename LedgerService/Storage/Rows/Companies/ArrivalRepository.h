#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

class Connection;

/// Which company is arriving, by whose hands, and when these were last at work.
struct Arrival {
    std::string companyID;
    std::string hands; // one process at one time
    std::string stamp;

    /// What stands in the place of the company's approval status, and how it begins while it is in these hands.
    [[nodiscard]] std::string status() const;
    [[nodiscard]] std::string hold() const;
    /// What stands before the day on which somebody was kept out, for those who come with the company.
    [[nodiscard]] std::string markOfPeople() const;
};

namespace ArrivalRepository {

std::vector<Arrival> all(Connection& connection);

/// Puts the company from the hands `before` into those of `now`, or says that it still is in these; false when it was
/// not in the former any more.
bool replace(Connection& connection, const Arrival& before, const Arrival& now);

/// Ends the arrival: the company has the status that it had, and so have its people.
void open(Connection& connection, const Arrival& arrival, const std::optional<std::string>& approvalStatus);

/// Removes at most so many rows of what has arrived; false when none are left. Expects writing transactions.
bool removePart(Connection& connection, const Arrival& arrival, std::size_t rows);

/// The same for the audit trail of a company that is gone.
bool removePartOfTrail(Connection& connection, std::string_view companyID, std::size_t rows);

}

}
