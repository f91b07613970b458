#pragma once

#include <optional>
#include <string_view>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

namespace LedgerService {

class Connection;

namespace SnapshotReader {

/// All of the company that the member may see, as one state of the database when read in one transaction; nothing
/// when there is no such member.
std::optional<LedgerSnapshot> read(Connection& connection, std::string_view companyID, std::string_view memberID);

}

}
