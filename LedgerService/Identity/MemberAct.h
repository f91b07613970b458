#pragma once

#include <string>

#include "LedgerCore/Domain/Records/Member.h"

namespace LedgerService {

class Connection;

/// A member who does something to the own company or to the own membership, in an open writing transaction.
struct MemberAct {
    Connection& connection;
    const std::string& companyID;
    const Member& member;
    const std::string& now; // stamp
};

}
