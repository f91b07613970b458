#include "LedgerCore/Client/Errors/APIError.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "LedgerCore/Client/Errors/FailureMessages.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"

namespace {

struct CodeMessage {
    std::string_view code;
    std::string_view key;
};

/// Codes that say what happened whatever the status.
constexpr std::array serviceCodes = std::to_array<CodeMessage>({
    {ServiceCode::companyPending, "companyPending"},
    {ServiceCode::companyRejected, "companyRejected"},
    {ServiceCode::invitationUsed, "invitationUsed"},
    {ServiceCode::financialSettingsRevisionConflict, "financialRevision"},
    {ServiceCode::financialSettingsRevisionLimit, "financialRevisionLimit"},
    {ServiceCode::financialSettingsInitialized, "financialInitialized"},
    {ServiceCode::financialStartDateConflict, "financialStartConflict"},
    {ServiceCode::financialBeforeStartDate, "financialBeforeStart"},
    {ServiceCode::financialOpeningDateMismatch, "financialOpeningDate"},
    {ServiceCode::financialOpeningExists, "financialOpeningExists"},
    {ServiceCode::contributionsDisabled, "contributionsDisabled"},
    {ServiceCode::dividendsDisabled, "dividendsDisabled"},
    {ServiceCode::capitalRevisionConflict, "capitalRevision"},
    {ServiceCode::capitalDateOrder, "capitalDate"},
    {ServiceCode::capitalBaselineOverlap, "capitalBaseline"},
    {ServiceCode::capitalBaselineBoundary, "capitalBaseline"},
    {ServiceCode::capitalBaselineConflict, "capitalBaseline"},
    {ServiceCode::capitalBaselineCoverage, "capitalBaseline"},
    {ServiceCode::capitalCorrectionRequired, "capitalCorrection"},
    {ServiceCode::capitalOwnershipMissing, "capitalOwnership"},
    {ServiceCode::capitalIntegrity, "capitalIntegrity"},
    {ServiceCode::capitalAmountLimit, "balance"},
    {ServiceCode::dividendRevisionConflict, "dividendRevision"},
    {ServiceCode::dividendDateOrder, "dividendDate"},
    {ServiceCode::dividendDependencies, "dividendDependencies"},
    {ServiceCode::dividendOverapplication, "dividendBalance"},
    {ServiceCode::dividendOverpayment, "dividendBalance"},
    {ServiceCode::dividendCorrectionRequired, "dividendCorrection"},
    {ServiceCode::dividendIntegrity, "dividendIntegrity"},
    {ServiceCode::dividendAmountLimit, "balance"},
    {ServiceCode::insufficientFunds, "funds"},
    {ServiceCode::nonzeroBalance, "nonzero"},
    {ServiceCode::invalidInvitation, "invitation"},
    {ServiceCode::emailExists, "email"},
    {ServiceCode::alreadyReversed, "reversed"},
    {ServiceCode::transactionReversed, "reversed"},
    {ServiceCode::unsupportedAttachment, "type"},
    {ServiceCode::inactiveMember, "inactive"},
    {ServiceCode::balanceLimit, "balance"},
    {ServiceCode::exclusiveOperator, "operator"},
    {ServiceCode::historyAcknowledgementRequired, "handover"},
    {ServiceCode::categoryArchived, "categoryArchived"},
    {ServiceCode::categoryOrderChanged, "categoryOrder"},
    {ServiceCode::categoryParentInvalid, "categoryParent"},
    {ServiceCode::categoryParentInactive, "categoryParentInactive"},
    {ServiceCode::categoryHasActiveChildren, "categoryChildren"},
    {ServiceCode::invalidRefundOriginal, "refundOriginal"},
    {ServiceCode::refundOriginalUnavailable, "refundOriginal"},
    {ServiceCode::refundReferenceRequired, "refundOriginal"},
    {ServiceCode::refundLimit, "refundLimit"},
    {ServiceCode::duplicateRefund, "refundDuplicate"},
    {ServiceCode::refundsExist, "refundsExist"},
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
    {ServiceCode::invalidInput, "input"},
    {ServiceCode::validationError, "input"},
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
