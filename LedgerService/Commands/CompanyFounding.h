#pragma once

#include <map>
#include <optional>
#include <string>

#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerService/Audit/AuditRecord.h"
#include "LedgerService/Books/Books.h"

namespace LedgerService {

class Connection;

/// A new company with all that it starts with. Members whose person the service does not know are new to it.
struct CompanyFounding {
    Company company;
    Books books;                                            // receipts that no entry names are left out
    std::optional<std::string> timeZone;                    // by its IANA name; nothing: that of the machine
    std::string passwordHash;                               // of people who are new; empty: they have none
    std::string origin{AuditOrigin::service};               // whence it is founded, for the audit trail
    std::optional<std::string> founder;                     // the member who does; nothing: service or operator
    std::map<std::string, std::string> demoProfileByMember; // in demonstration companies only
    std::optional<std::string> demoVisitorAt;               // in that of one visitor: when the visitor came

    /// Writes it all; expects a writing transaction. Throws when an address or id is taken.
    void write(Connection& connection) const;
};

}
