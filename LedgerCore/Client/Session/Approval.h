#pragma once

#include <optional>

#include "LedgerCore/Client/Errors/APIError.h"
#include "LedgerCore/Domain/Records/Company.h"

/// Whether a company's books may be opened. The service reviews new companies first.
namespace Approval {

/// What keeps the company closed, or nothing. A company without a review state is open.
std::optional<APIError> whyNot(const Company& company);

}
