#pragma once

#include <string>

#include "LedgerCore/Domain/Records/Member.h"

namespace LedgerService {

class Connection;

/// Who carries a command out, where and when. Commands expect a writing transaction; with a refusal nothing was
/// written.
struct CommandAct {
    Connection& connection;
    const std::string& companyID;
    const Member& member;
    const std::string& today; // the company's day
    const std::string& now;   // stamp
};

}
