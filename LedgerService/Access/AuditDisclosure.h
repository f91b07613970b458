#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerService/Audit/AuditRecord.h"

namespace LedgerService {

class Connection;

/// What an owner reads of the audit trail: that something was done, by whom and to what, always; how it stood before
/// and after, and the digest of an entry, only of what the owner gets to see of the company otherwise. The chain is the
/// operator's: each of its links covers all records before it, whoever sees them.
class AuditDisclosure {
public:
    AuditDisclosure(Connection& connection, const std::string& companyID, const Member& reader)
        : m_connection(connection), m_companyID(companyID), m_reader(reader)
    {
    }

    /// The records of a page.
    [[nodiscard]] std::vector<AuditRecord> of(std::vector<AuditRecord> records) const;

private:
    using Entries = std::unordered_set<std::string>;

    [[nodiscard]] bool shows(const AuditRecord& record) const;
    [[nodiscard]] Entries shownEntries(const std::vector<AuditRecord>& records) const;
    [[nodiscard]] bool showsTemplate(const AuditRecord& record) const;

    Connection& m_connection;
    const std::string& m_companyID;
    const Member& m_reader;
};

}
