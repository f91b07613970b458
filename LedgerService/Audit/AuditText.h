#pragma once

#include <string>

#include "LedgerService/Audit/AuditRecord.h"
#include "LedgerService/Audit/AuditTrail.h"

namespace LedgerService {

namespace AuditText {

/// The record as JSON, with what stood before and after as parts of it.
std::string of(const AuditRecord& record);

/// {"records":[…],"next":…}
std::string of(const AuditPage& page);

}

}
