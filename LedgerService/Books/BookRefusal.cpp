#include "LedgerService/Books/BookRefusal.h"

#include <utility>

namespace LedgerService {

namespace {

Refusal malformed(std::string code, std::string words)
{
    return {400, std::move(code), std::move(words)};
}

Refusal denied(std::string code, std::string words)
{
    return {403, std::move(code), std::move(words)};
}

/// What is asked for does not fit what is recorded.
Refusal conflict(std::string code, std::string words)
{
    return {409, std::move(code), std::move(words)};
}

}

Refusal BookRefusal::invalid(std::string words)
{
    return malformed("validation_error", std::move(words));
}

Refusal BookRefusal::notFound()
{
    return {404, "not_found", "The command names a record that does not exist or that the member does not see."};
}

Refusal BookRefusal::forbidden(std::string words)
{
    return denied("forbidden", std::move(words));
}

Refusal BookRefusal::inactiveMember()
{
    return denied("inactive_member", "The member is deactivated.");
}

Refusal BookRefusal::exclusiveOperator()
{
    return denied("exclusive_operator", "Only the responsible member uses this account.");
}

Refusal BookRefusal::accountArchived()
{
    return conflict("account_archived", "An archived account takes no new entries.");
}

Refusal BookRefusal::beforeStartDate()
{
    return conflict("financial_before_start_date", "The day lies before the bookkeeping start date.");
}

Refusal BookRefusal::openingDateMismatch()
{
    return conflict("financial_opening_date_mismatch", "Openings are booked on the bookkeeping start date.");
}

Refusal BookRefusal::openingExists()
{
    return conflict("financial_opening_exists", "The account already has an opening in this currency.");
}

Refusal BookRefusal::categoryArchived()
{
    return conflict("CATEGORY_ARCHIVED", "An archived category takes no new entries.");
}

Refusal BookRefusal::invalidRefundOriginal()
{
    return malformed("invalid_refund_original", "A refund names an income in its own currency.");
}

Refusal BookRefusal::refundOriginalUnavailable()
{
    return conflict("refund_original_unavailable", "The original is reversed, or the member may not refund it.");
}

Refusal BookRefusal::refundReferenceRequired()
{
    return malformed("refund_reference_required", "A refund needs an original income or an external reference.");
}

Refusal BookRefusal::refundLimit()
{
    return conflict("refund_limit", "The refunds would exceed the original income.");
}

Refusal BookRefusal::duplicateRefund()
{
    return conflict("duplicate_refund", "A refund with this reference is already recorded.");
}

Refusal BookRefusal::refundsExist()
{
    return conflict("refunds_exist", "Refunds of this income must be reversed first.");
}

Refusal BookRefusal::attachmentLinked()
{
    return conflict("attachment_linked", "A receipt is already linked to an entry.");
}

Refusal BookRefusal::insufficientFunds()
{
    return conflict("insufficient_funds", "The employee fund holds less than that in this currency.");
}

Refusal BookRefusal::balanceLimit()
{
    return conflict("balance_limit", "The balance would leave the supported range.");
}

Refusal BookRefusal::alreadyReversed()
{
    return conflict("already_reversed", "The entry is already reversed.");
}

Refusal BookRefusal::capitalCorrectionRequired()
{
    return conflict("capital_correction_required", "A contribution is corrected among the capital records.");
}

Refusal BookRefusal::dividendCorrectionRequired()
{
    return conflict("dividend_correction_required", "A dividend is corrected among the dividend records.");
}

}
