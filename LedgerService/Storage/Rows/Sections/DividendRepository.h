#pragma once

#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendHistory.h"

namespace LedgerService {

class Connection;

/// A company's dividend section: rows are only ever added, one change after the other.
namespace DividendRepository {

/// Every change in the order of revisions. Throws when a record belongs to none.
std::vector<DividendChange> changes(Connection& connection, std::string_view companyID);

/// The same, from this revision on.
std::vector<DividendChange> changesFrom(Connection& connection, std::string_view companyID, int revision);

/// The section as its changes made it.
DividendState state(Connection& connection, std::string_view companyID);

/// Adds the change, whose revision is the next. The entry that it names is recorded already.
void append(Connection& connection, std::string_view companyID, const DividendChange& change);

}

}
