#include "LedgerCore/Client/Approval.h"

std::optional<APIError> Approval::whyNot(const Company& company)
{
    constexpr int forbidden = 403;
    if (!company.approvalStatus || *company.approvalStatus == "approved")
        return std::nullopt;
    const bool rejected = *company.approvalStatus == "rejected";
    return APIError{.status = forbidden, .code = rejected ? "company_rejected" : "company_pending", .message = {}};
}
