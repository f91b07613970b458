#pragma once

#include <string_view>

/// The codes by which the service says why it refuses. It spells them in two ways, and means both exactly.
namespace ServiceCode {

// The request as such.
inline constexpr std::string_view validationError = "validation_error";
inline constexpr std::string_view invalidInput = "invalid_input";
inline constexpr std::string_view unauthorized = "unauthorized";
inline constexpr std::string_view forbidden = "forbidden";
inline constexpr std::string_view notFound = "not_found";
inline constexpr std::string_view methodNotAllowed = "method_not_allowed";
inline constexpr std::string_view idempotencyConflict = "idempotency_conflict"; // the key belongs to another command
inline constexpr std::string_view conflict = "conflict"; // the record's state is no longer the one that was expected
inline constexpr std::string_view payloadTooLarge = "payload_too_large";
inline constexpr std::string_view headerTooLarge = "header_too_large";
inline constexpr std::string_view rateLimited = "rate_limited";
inline constexpr std::string_view internalError = "internal_error";
inline constexpr std::string_view notImplemented = "not_implemented"; // a transfer coding that nobody here reads
inline constexpr std::string_view serviceUnavailable = "service_unavailable";
inline constexpr std::string_view insufficientStorage = "insufficient_storage"; // the service's disk is full

// People and companies.
inline constexpr std::string_view companyPending = "company_pending";
inline constexpr std::string_view companyRejected = "company_rejected";
inline constexpr std::string_view inactiveMember = "inactive_member";
inline constexpr std::string_view invitationUsed = "invitation_used";
inline constexpr std::string_view invalidInvitation = "invalid_invitation";
inline constexpr std::string_view emailExists = "email_exists";
inline constexpr std::string_view invalidVerification = "invalid_verification"; // the mailed code or its ticket
inline constexpr std::string_view mailUnavailable = "mail_unavailable";

// Accounts and entries.
inline constexpr std::string_view accountArchived = "account_archived";
inline constexpr std::string_view exclusiveOperator = "exclusive_operator";
inline constexpr std::string_view historyAcknowledgementRequired = "history_acknowledgement_required";
inline constexpr std::string_view nonzeroBalance = "nonzero_balance";
inline constexpr std::string_view insufficientFunds = "insufficient_funds";
inline constexpr std::string_view balanceLimit = "balance_limit";
inline constexpr std::string_view alreadyReversed = "already_reversed";
inline constexpr std::string_view transactionReversed = "transaction_reversed";
inline constexpr std::string_view invalidRefundOriginal = "invalid_refund_original";
inline constexpr std::string_view refundOriginalUnavailable = "refund_original_unavailable";
inline constexpr std::string_view refundReferenceRequired = "refund_reference_required";
inline constexpr std::string_view refundLimit = "refund_limit";
inline constexpr std::string_view duplicateRefund = "duplicate_refund";
inline constexpr std::string_view refundsExist = "refunds_exist";
inline constexpr std::string_view unsupportedAttachment = "unsupported_attachment";
inline constexpr std::string_view attachmentLinked = "attachment_linked";

// Categories.
inline constexpr std::string_view categoryArchived = "CATEGORY_ARCHIVED";
inline constexpr std::string_view categoryOrderChanged = "CATEGORY_ORDER_CHANGED";
inline constexpr std::string_view categoryParentInvalid = "CATEGORY_PARENT_INVALID";
inline constexpr std::string_view categoryParentInactive = "CATEGORY_PARENT_INACTIVE";
inline constexpr std::string_view categoryHasActiveChildren = "CATEGORY_HAS_ACTIVE_CHILDREN";

// Financial settings and the start of the books.
inline constexpr std::string_view financialSettingsRevisionConflict = "financial_settings_revision_conflict";
inline constexpr std::string_view financialSettingsRevisionLimit = "financial_settings_revision_limit";
inline constexpr std::string_view financialSettingsInitialized = "financial_settings_initialized";
inline constexpr std::string_view financialStartDateConflict = "financial_start_date_conflict";
inline constexpr std::string_view financialBeforeStartDate = "financial_before_start_date";
inline constexpr std::string_view financialOpeningDateMismatch = "financial_opening_date_mismatch";
inline constexpr std::string_view financialOpeningExists = "financial_opening_exists";

// Capital.
inline constexpr std::string_view contributionsDisabled = "contributions_disabled";
inline constexpr std::string_view capitalRevisionConflict = "capital_revision_conflict";
inline constexpr std::string_view capitalDateOrder = "capital_date_order";
inline constexpr std::string_view capitalBaselineOverlap = "capital_baseline_overlap";
inline constexpr std::string_view capitalBaselineBoundary = "capital_baseline_boundary";
inline constexpr std::string_view capitalBaselineConflict = "capital_baseline_conflict";
inline constexpr std::string_view capitalBaselineCoverage = "capital_baseline_coverage";
inline constexpr std::string_view capitalCorrectionRequired = "capital_correction_required";
inline constexpr std::string_view capitalOwnershipMissing = "capital_ownership_missing";
inline constexpr std::string_view capitalIntegrity = "capital_integrity";
inline constexpr std::string_view capitalAmountLimit = "capital_amount_limit";

// Dividends.
inline constexpr std::string_view dividendsDisabled = "dividends_disabled";
inline constexpr std::string_view dividendRevisionConflict = "dividend_revision_conflict";
inline constexpr std::string_view dividendDateOrder = "dividend_date_order";
inline constexpr std::string_view dividendDependencies = "dividend_dependencies";
inline constexpr std::string_view dividendOverapplication = "dividend_overapplication";
inline constexpr std::string_view dividendOverpayment = "dividend_overpayment";
inline constexpr std::string_view dividendCorrectionRequired = "dividend_correction_required";
inline constexpr std::string_view dividendIntegrity = "dividend_integrity";
inline constexpr std::string_view dividendAmountLimit = "dividend_amount_limit";

}
