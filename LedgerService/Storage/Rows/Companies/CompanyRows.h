#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

class Connection;
struct Arrival;

/// All that a database keeps of one company, table by table, whatever the rows mean.
namespace CompanyRows {

/// The tables whose rows belong to a company each, by their column `company_id`; each after those that its rows refer
/// to.
std::vector<std::string> tables();

/// Those of them that stay where they are when a company is copied: what people are signed in by, and what they are
/// about to prove.
bool stays(std::string_view table);

/// Why the people of the company in `from` cannot be people of `to`, in words.
std::vector<std::string> collisions(Connection& from, Connection& to, const std::string& companyID);

/// How a company is copied.
struct Copying {
    const Arrival* arrival = nullptr;      // given: nobody finds it, nor the people who come with it
    std::size_t rowsAtOnce = 2'000;        // in memory, and from one call of `between` to the next
    std::function<void()> between = [] {}; // a writing transaction may end here, and another begin
};

/// Copies the company with its people, its books and its audit trail from one database to another of the same schema,
/// whichever kinds they are; expects transactions on both and a company that `to` does not know. People that both know
/// stay as they are there.
void copy(Connection& from, Connection& to, const std::string& companyID, const Copying& how = {});

}

}
