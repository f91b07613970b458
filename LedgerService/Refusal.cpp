#include "LedgerService/Refusal.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/Replies.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"

namespace LedgerService {

namespace {

struct CodeRow {
    std::string_view code;
    int status;
};

/// The status of each code.
constexpr CodeRow statusByCode[] = {
    {ServiceCode::validationError, 400},
    {ServiceCode::invalidInvitation, 400},
    {ServiceCode::invalidVerification, 400},
    {ServiceCode::invalidRefundOriginal, 400},
    {ServiceCode::refundReferenceRequired, 400},
    {ServiceCode::unauthorized, 401},
    {ServiceCode::forbidden, 403},
    {ServiceCode::inactiveMember, 403},
    {ServiceCode::companyPending, 403},
    {ServiceCode::companyRejected, 403},
    {ServiceCode::exclusiveOperator, 403},
    {ServiceCode::notFound, 404},
    {ServiceCode::methodNotAllowed, 405},
    {ServiceCode::conflict, 409},
    {ServiceCode::idempotencyConflict, 409},
    {ServiceCode::invitationUsed, 409},
    {ServiceCode::emailExists, 409},
    {ServiceCode::accountArchived, 409},
    {ServiceCode::historyAcknowledgementRequired, 409},
    {ServiceCode::nonzeroBalance, 409},
    {ServiceCode::insufficientFunds, 409},
    {ServiceCode::balanceLimit, 409},
    {ServiceCode::alreadyReversed, 409},
    {ServiceCode::refundOriginalUnavailable, 409},
    {ServiceCode::refundLimit, 409},
    {ServiceCode::duplicateRefund, 409},
    {ServiceCode::refundsExist, 409},
    {ServiceCode::attachmentLinked, 409},
    {ServiceCode::categoryArchived, 409},
    {ServiceCode::categoryOrderChanged, 409},
    {ServiceCode::categoryParentInvalid, 409},
    {ServiceCode::categoryParentInactive, 409},
    {ServiceCode::categoryHasActiveChildren, 409},
    {ServiceCode::financialSettingsRevisionConflict, 409},
    {ServiceCode::financialSettingsRevisionLimit, 409},
    {ServiceCode::financialSettingsInitialized, 409},
    {ServiceCode::financialStartDateConflict, 409},
    {ServiceCode::financialBeforeStartDate, 409},
    {ServiceCode::financialOpeningDateMismatch, 409},
    {ServiceCode::financialOpeningExists, 409},
    {ServiceCode::contributionsDisabled, 409},
    {ServiceCode::capitalRevisionConflict, 409},
    {ServiceCode::capitalDateOrder, 409},
    {ServiceCode::capitalBaselineOverlap, 409},
    {ServiceCode::capitalBaselineBoundary, 409},
    {ServiceCode::capitalBaselineConflict, 409},
    {ServiceCode::capitalBaselineCoverage, 409},
    {ServiceCode::capitalCorrectionRequired, 409},
    {ServiceCode::capitalOwnershipMissing, 409},
    {ServiceCode::capitalIntegrity, 409},
    {ServiceCode::capitalAmountLimit, 409},
    {ServiceCode::dividendsDisabled, 409},
    {ServiceCode::dividendRevisionConflict, 409},
    {ServiceCode::dividendDateOrder, 409},
    {ServiceCode::dividendDependencies, 409},
    {ServiceCode::dividendOverapplication, 409},
    {ServiceCode::dividendOverpayment, 409},
    {ServiceCode::dividendCorrectionRequired, 409},
    {ServiceCode::dividendIntegrity, 409},
    {ServiceCode::dividendAmountLimit, 409},
    {ServiceCode::payloadTooLarge, 413},
    {ServiceCode::unsupportedAttachment, 415},
    {ServiceCode::rateLimited, 429},
    {ServiceCode::headerTooLarge, 431},
    {ServiceCode::internalError, 500},
    {ServiceCode::notImplemented, 501},
    {ServiceCode::mailUnavailable, 503},
    {ServiceCode::serviceUnavailable, 503},
    {ServiceCode::insufficientStorage, 507},
};

}

Refusal::Refusal(int givenStatus, std::string_view givenCode, std::string words, std::chrono::seconds later)
    : status(givenStatus), code(givenCode), message(std::move(words)), retryAfter(later)
{
}

Refusal Refusal::of(std::string_view code, std::string message, std::chrono::seconds retryAfter)
{
    const auto* const row = std::ranges::find(statusByCode, code, &CodeRow::code);
    require(row != std::end(statusByCode), "every code has its status");
    if (code == ServiceCode::rateLimited && retryAfter == std::chrono::seconds{})
        retryAfter = std::chrono::hours{1}; // of what does not pass by itself, too, everybody hears when to come back
    return {row->status, row->code, std::move(message), retryAfter};
}

std::string errorBody(const Refusal& refusal)
{
    return Json::encode(ErrorReply{{.code = std::string{refusal.code}, .message = refusal.message}});
}

}
