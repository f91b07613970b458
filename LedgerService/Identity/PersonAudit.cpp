#include "LedgerService/Identity/PersonAudit.h"

#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"

namespace LedgerService {

void PersonAudit::tell(Connection& connection, std::string_view userID, std::string_view kind, std::string_view origin,
                       std::string_view now)
{
    AuditRecord record;
    record.at = now;
    record.origin = origin;
    record.kind = kind;
    const auto memberships = MemberRepository::memberships(connection, userID);
    for (const auto& each : memberships) {
        record.record = each.memberID;
        if (origin != AuditOrigin::operating)
            record.memberID = each.memberID;
        AuditTrail::append(connection, each.companyID, record);
    }
    if (memberships.empty()) {
        record.record = userID;
        AuditTrail::append(connection, "", std::move(record));
    }
}

}
