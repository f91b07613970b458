#include "LedgerCore/Client/APIError.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "LedgerCore/Client/ServiceMessages.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"

namespace {

struct CodeMessage {
    std::string_view code;
    std::string_view key;
};

/// Codes that say what happened whatever the status. The service spells them in two ways, and means both exactly.
constexpr std::array serviceCodes = std::to_array<CodeMessage>({
    {"company_pending", "companyPending"},
    {"company_rejected", "companyRejected"},
    {"invitation_used", "invitationUsed"},
    {"financial_settings_revision_conflict", "financialRevision"},
    {"financial_settings_revision_limit", "financialRevisionLimit"},
    {"financial_settings_initialized", "financialInitialized"},
    {"financial_start_date_conflict", "financialStartConflict"},
    {"financial_before_start_date", "financialBeforeStart"},
    {"financial_opening_date_mismatch", "financialOpeningDate"},
    {"financial_opening_exists", "financialOpeningExists"},
    {"contributions_disabled", "contributionsDisabled"},
    {"dividends_disabled", "dividendsDisabled"},
    {"capital_revision_conflict", "capitalRevision"},
    {"capital_date_order", "capitalDate"},
    {"capital_baseline_overlap", "capitalBaseline"},
    {"capital_baseline_boundary", "capitalBaseline"},
    {"capital_baseline_conflict", "capitalBaseline"},
    {"capital_baseline_coverage", "capitalBaseline"},
    {"capital_correction_required", "capitalCorrection"},
    {"capital_ownership_missing", "capitalOwnership"},
    {"capital_integrity", "capitalIntegrity"},
    {"capital_amount_limit", "balance"},
    {"dividend_revision_conflict", "dividendRevision"},
    {"dividend_date_order", "dividendDate"},
    {"dividend_dependencies", "dividendDependencies"},
    {"dividend_overapplication", "dividendBalance"},
    {"dividend_overpayment", "dividendBalance"},
    {"dividend_correction_required", "dividendCorrection"},
    {"dividend_integrity", "dividendIntegrity"},
    {"dividend_amount_limit", "balance"},
    {"insufficient_funds", "funds"},
    {"nonzero_balance", "nonzero"},
    {"invalid_invitation", "invitation"},
    {"email_exists", "email"},
    {"already_reversed", "reversed"},
    {"transaction_reversed", "reversed"},
    {"unsupported_attachment", "type"},
    {"inactive_member", "inactive"},
    {"balance_limit", "balance"},
    {"exclusive_operator", "operator"},
    {"history_acknowledgement_required", "handover"},
    {"CATEGORY_ARCHIVED", "categoryArchived"},
    {"CATEGORY_ORDER_CHANGED", "categoryOrder"},
    {"CATEGORY_PARENT_INVALID", "categoryParent"},
    {"CATEGORY_PARENT_INACTIVE", "categoryParentInactive"},
    {"CATEGORY_HAS_ACTIVE_CHILDREN", "categoryChildren"},
    {"invalid_refund_original", "refundOriginal"},
    {"refund_original_unavailable", "refundOriginal"},
    {"refund_reference_required", "refundOriginal"},
    {"refund_limit", "refundLimit"},
    {"duplicate_refund", "refundDuplicate"},
    {"refunds_exist", "refundsExist"},
});

/// Codes that count only where the status says nothing.
constexpr std::array remainingCodes = std::to_array<CodeMessage>({
    {ClientCode::busy, "busy"},
    {ClientCode::invalidServerURL, "url"},
    {ClientCode::keychainUnavailable, "keychain"},
    {ClientCode::keychainRestoreUnavailable, "keychainRestore"},
    {ClientCode::keychainLogoutUnavailable, "keychainLogout"},
    {ClientCode::noSession, "auth"},
    {ClientCode::network, "network"},
    {ClientCode::invalidResponse, "response"},
    {ClientCode::invalidInput, "input"},
    {"invalid_input", "input"},
    {"validation_error", "input"},
});

std::optional<std::string_view> keyOfCode(std::span<const CodeMessage> table, std::string_view code)
{
    const auto found = std::ranges::find(table, code, &CodeMessage::code);
    return found == table.end() ? std::nullopt : std::optional{found->key};
}

std::optional<std::string_view> keyOfStatus(int status)
{
    switch (status) {
    case 401:
        return "auth";
    case 403:
        return "forbidden";
    case 404:
        return "missing";
    case 409:
        return "conflict";
    case 413:
        return "size";
    case 429:
        return "rate";
    default:
        return status >= 500 ? std::optional<std::string_view>{"server"} : std::nullopt;
    }
}

}

std::string_view APIError::messageKey() const
{
    if (const auto key = keyOfCode(serviceCodes, code))
        return *key;
    if (const auto key = keyOfStatus(status))
        return *key;
    return keyOfCode(remainingCodes, code).value_or("unknown");
}

std::string_view APIError::friendlyMessage(std::string_view locale) const
{
    return serviceMessages().text(messageKey(), AppLanguage::locale(locale));
}

APIError clientError(std::string_view code)
{
    return {.status = 0, .code = std::string{code}, .message = {}};
}
