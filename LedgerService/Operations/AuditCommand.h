#pragma once

#include <string>

#include "LedgerService/Audit/AuditTrail.h"

namespace LedgerService {

namespace AuditCommand {

/// Prints what the filter finds in the audit trail of the company, or of all companies, one record per line as JSON,
/// the latest first; the exit code. `filter.limit` counts for each company.
int run(const std::string& file, const std::string& companyID, const AuditFilter& filter);

}

}
