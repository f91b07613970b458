#pragma once

#include <string>
#include <vector>

namespace LedgerService {

class Connection;

/// Records that are kept as JSON and read only when somebody asks for them: templates, drafts and invitations.
namespace KeptRecords {

/// Every text that is not the record which was written to it, in words.
std::vector<std::string> broken(Connection& connection);

}

}
