#include "LedgerService/Operations/AuditCommand.h"

#include <fmt/core.h>

#include "LedgerService/Audit/AuditText.h"
#include "LedgerService/Operations/Databases/DatabaseFile.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

constexpr int pageLength = 500;

void print(Connection& connection, const std::string& scope, AuditFilter filter)
{
    auto left = filter.limit;
    do {
        filter.limit = std::min(left, pageLength);
        const auto page = AuditTrail::page(connection, scope, filter);
        for (const auto& each : page.records)
            fmt::print("{}\n", AuditText::of(each));
        left -= static_cast<int>(page.records.size());
        filter.below = page.next;
    } while (left > 0 && filter.below > 0);
}

}

int AuditCommand::run(const std::string& file, const std::string& companyID, const AuditFilter& filter)
{
    if (const auto refused = DatabaseFile::whyNotExisting(file)) {
        fmt::print(stderr, "tallyfold-service: {}\n", *refused);
        return 1;
    }
    Connection connection{file, Connection::Access::readOnly};
    const Transaction transaction{connection, Transaction::Mode::reading};
    for (const auto& scope : AuditTrail::scopes(connection)) {
        if (companyID.empty() || scope == companyID)
            print(connection, scope, filter);
    }
    return 0;
}

}
