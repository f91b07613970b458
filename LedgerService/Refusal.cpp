#include "LedgerService/Refusal.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"

namespace LedgerService {

namespace {

struct CodeRow {
    std::string_view code;
    int status;
};

/// The status of each code; where one code comes with several, the usual one.
constexpr CodeRow statusByCode[] = {
    {ServiceCode::validationError, 400},
    {ServiceCode::invalidRefundOriginal, 400},
    {ServiceCode::refundReferenceRequired, 400},
    {ServiceCode::unauthorized, 401},
    {ServiceCode::forbidden, 403},
    {ServiceCode::inactiveMember, 403},
    {ServiceCode::exclusiveOperator, 403},
    {ServiceCode::companyPending, 403},
    {ServiceCode::companyRejected, 403},
    {ServiceCode::notFound, 404},
    {ServiceCode::methodNotAllowed, 405},
    {ServiceCode::idempotencyConflict, 409},
    {ServiceCode::alreadyReversed, 409},
    {ServiceCode::refundsExist, 409},
    {ServiceCode::refundOriginalUnavailable, 409},
    {ServiceCode::refundLimit, 409},
    {ServiceCode::duplicateRefund, 409},
    {ServiceCode::insufficientFunds, 409},
    {ServiceCode::balanceLimit, 409},
    {ServiceCode::accountArchived, 409},
    {ServiceCode::categoryArchived, 409},
    {ServiceCode::attachmentLinked, 409},
    {ServiceCode::financialBeforeStartDate, 409},
    {ServiceCode::financialOpeningDateMismatch, 409},
    {ServiceCode::financialOpeningExists, 409},
    {ServiceCode::capitalCorrectionRequired, 409},
    {ServiceCode::dividendCorrectionRequired, 409},
    {ServiceCode::payloadTooLarge, 413},
    {ServiceCode::rateLimited, 429},
    {ServiceCode::internalError, 500},
    {ServiceCode::serviceUnavailable, 503},
};

struct ErrorDetail {
    std::string code;
    std::string message;
};
BOOST_DESCRIBE_STRUCT(ErrorDetail, (), (code, message))

struct ErrorReply {
    ErrorDetail error;
};
BOOST_DESCRIBE_STRUCT(ErrorReply, (), (error))

}

Refusal Refusal::of(std::string_view code, std::string message)
{
    const auto* const row = std::ranges::find(statusByCode, code, &CodeRow::code);
    require(row != std::end(statusByCode), "every code has its status");
    Refusal refusal;
    refusal.status = row->status;
    refusal.code = row->code;
    refusal.message = std::move(message);
    return refusal;
}

std::string errorBody(const Refusal& refusal)
{
    return Json::encode(ErrorReply{{std::string{refusal.code}, refusal.message}});
}

}
