#include "LedgerCore/Client/Session/Approval.h"

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"

std::optional<APIError> Approval::whyNot(const Company& company)
{
    constexpr int forbidden = 403;
    if (!company.approvalStatus || *company.approvalStatus == ApprovalStatus::approved)
        return std::nullopt;
    const bool rejected = *company.approvalStatus == ApprovalStatus::rejected;
    return APIError{.status = forbidden,
                    .code = std::string{rejected ? ServiceCode::companyRejected : ServiceCode::companyPending},
                    .message = {}};
}
