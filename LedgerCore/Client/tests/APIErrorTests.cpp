#include "LedgerCore/Client/Errors/APIError.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Client/Errors/FailureMessages.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"

namespace {

struct Meaning {
    int status;
    const char* code;
    const char* key;
};

class MessageKey : public testing::TestWithParam<Meaning> {};

TEST_P(MessageKey, PutsCodesBeforeStatusesAndStatusesBeforeTheClientsOwnCodes)
{
    const auto& [status, code, key] = GetParam();
    EXPECT_EQ((APIError{status, code, ""}.messageKey()), key);
}

INSTANTIATE_TEST_SUITE_P(
    Order, MessageKey,
    testing::Values(
        Meaning{401, "company_pending", "companyPending"}, Meaning{409, "capital_revision_conflict", "capitalRevision"},
        Meaning{403, "exclusive_operator", "operator"}, Meaning{500, "refund_limit", "refundLimit"},
        Meaning{400, "category_archived", "unknown"}, Meaning{400, "CATEGORY_ARCHIVED", "categoryArchived"},
        Meaning{400, "Insufficient_funds", "unknown"}, Meaning{401, "HTTP_ERROR", "auth"},
        Meaning{403, "HTTP_ERROR", "forbidden"}, Meaning{404, "HTTP_ERROR", "missing"},
        Meaning{409, "HTTP_ERROR", "conflict"}, Meaning{413, "HTTP_ERROR", "size"}, Meaning{429, "HTTP_ERROR", "rate"},
        Meaning{500, "HTTP_ERROR", "server"}, Meaning{502, "BUSY", "server"},
        Meaning{409, "validation_error", "conflict"}, Meaning{0, "BUSY", "busy"},
        Meaning{400, "validation_error", "input"}, Meaning{400, "Validation_Error", "unknown"},
        Meaning{422, "invalid_input", "input"}, Meaning{0, "INVALID_INPUT", "input"},
        Meaning{0, "INVALID_SERVER_URL", "url"}, Meaning{0, "KEYCHAIN_UNAVAILABLE", "keychain"},
        Meaning{0, "KEYCHAIN_RESTORE_UNAVAILABLE", "keychainRestore"},
        Meaning{0, "KEYCHAIN_LOGOUT_UNAVAILABLE", "keychainLogout"}, Meaning{0, "NO_SESSION", "auth"},
        Meaning{0, "NETWORK", "network"}, Meaning{0, "INVALID_RESPONSE", "response"},
        Meaning{0, "ALREADY_AUTHENTICATED", "unknown"}, Meaning{0, "REPORT_EXPORT_SCOPE_CHANGED", "unknown"},
        Meaning{302, "HTTP_ERROR", "unknown"}, Meaning{400, "", "unknown"}));

/// Which codes lead to which message; every other code leads elsewhere.
const std::multimap<std::string_view, std::string_view> codesByKey{
    {"invitationUsed", "invitation_used"},
    {"companyRejected", "company_rejected"},
    {"financialRevision", "financial_settings_revision_conflict"},
    {"financialRevisionLimit", "financial_settings_revision_limit"},
    {"financialInitialized", "financial_settings_initialized"},
    {"financialStartConflict", "financial_start_date_conflict"},
    {"financialBeforeStart", "financial_before_start_date"},
    {"financialOpeningDate", "financial_opening_date_mismatch"},
    {"financialOpeningExists", "financial_opening_exists"},
    {"contributionsDisabled", "contributions_disabled"},
    {"dividendsDisabled", "dividends_disabled"},
    {"capitalDate", "capital_date_order"},
    {"capitalBaseline", "capital_baseline_overlap"},
    {"capitalBaseline", "capital_baseline_boundary"},
    {"capitalBaseline", "capital_baseline_conflict"},
    {"capitalBaseline", "capital_baseline_coverage"},
    {"capitalCorrection", "capital_correction_required"},
    {"capitalOwnership", "capital_ownership_missing"},
    {"capitalIntegrity", "capital_integrity"},
    {"balance", "capital_amount_limit"},
    {"dividendRevision", "dividend_revision_conflict"},
    {"dividendDate", "dividend_date_order"},
    {"dividendDependencies", "dividend_dependencies"},
    {"dividendBalance", "dividend_overapplication"},
    {"dividendBalance", "dividend_overpayment"},
    {"dividendCorrection", "dividend_correction_required"},
    {"dividendIntegrity", "dividend_integrity"},
    {"balance", "dividend_amount_limit"},
    {"funds", "insufficient_funds"},
    {"nonzero", "nonzero_balance"},
    {"invitation", "invalid_invitation"},
    {"email", "email_exists"},
    {"reversed", "already_reversed"},
    {"reversed", "transaction_reversed"},
    {"type", "unsupported_attachment"},
    {"inactive", "inactive_member"},
    {"balance", "balance_limit"},
    {"handover", "history_acknowledgement_required"},
    {"categoryOrder", "CATEGORY_ORDER_CHANGED"},
    {"categoryParent", "CATEGORY_PARENT_INVALID"},
    {"categoryParentInactive", "CATEGORY_PARENT_INACTIVE"},
    {"categoryChildren", "CATEGORY_HAS_ACTIVE_CHILDREN"},
    {"refundOriginal", "invalid_refund_original"},
    {"refundOriginal", "refund_original_unavailable"},
    {"refundOriginal", "refund_reference_required"},
    {"refundDuplicate", "duplicate_refund"},
    {"refundsExist", "refunds_exist"},
};

TEST(MessageKey, OfAServiceCodeIsTheSameAtEveryStatus)
{
    for (const auto& [key, code] : codesByKey) {
        for (const int status : {0, 400, 401, 403, 409, 500})
            EXPECT_EQ((APIError{status, std::string{code}, ""}.messageKey()), key) << code << " at " << status;
    }
}

TEST(ServiceMessages, AreFiftyNineRowsOfFourDifferentTexts)
{
    std::set<std::string_view> texts;
    for (const auto& row : serviceMessages().rows()) {
        const std::set<std::string_view> columns{row.chinese, row.indonesian, row.vietnamese, row.english};
        EXPECT_EQ(columns.size(), 4U) << row.key;
        EXPECT_FALSE(columns.contains("")) << row.key;
        texts.insert(columns.begin(), columns.end());
        // A row that slipped by a column shows at the end of its sentence.
        EXPECT_TRUE(row.chinese.ends_with("。")) << row.key;
        for (const auto other : {row.indonesian, row.vietnamese, row.english})
            EXPECT_TRUE(other.ends_with(".")) << row.key;
    }
    EXPECT_EQ(serviceMessages().rows().size(), 59U);
    EXPECT_EQ(texts.size(), 4 * 59U);
}

TEST(ServiceMessages, HoldEveryKeyThatAFailureCanHave)
{
    for (const auto& [key, code] : codesByKey)
        EXPECT_TRUE(serviceMessages().contains(key)) << key;
    for (const int status : {0, 400, 401, 403, 404, 409, 413, 429, 500}) {
        for (const auto* code :
             {"BUSY", "NETWORK", "INVALID_RESPONSE", "INVALID_INPUT", "INVALID_SERVER_URL", "KEYCHAIN_UNAVAILABLE",
              "KEYCHAIN_RESTORE_UNAVAILABLE", "KEYCHAIN_LOGOUT_UNAVAILABLE", "?"})
            EXPECT_TRUE(serviceMessages().contains(APIError{status, code, ""}.messageKey())) << status << code;
    }
}

struct Column {
    const char* locale;
    const char* text;
};

class FriendlyMessage : public testing::TestWithParam<Column> {};

TEST_P(FriendlyMessage, SpeaksTheLanguageThatTheLocaleResolvesTo)
{
    EXPECT_EQ(clientError(ClientCode::network).friendlyMessage(GetParam().locale), GetParam().text);
}

constexpr auto chinese = "无法连接服务，请检查服务地址与网络。当前数据尚未刷新。";
constexpr auto english =
    "Unable to connect. Check the service address and your network. The current data has not been refreshed.";

INSTANTIATE_TEST_SUITE_P(
    Locales, FriendlyMessage,
    testing::Values(Column{"zh-CN", chinese}, Column{"zh-Hant-TW", chinese}, Column{"fr-FR", chinese},
                    Column{"", chinese}, Column{"en-US", english}, Column{"EN_gb", english},
                    Column{"id-ID",
                           "Tidak dapat terhubung. Periksa alamat layanan dan jaringan. Data belum diperbarui."},
                    Column{"vi", "Không thể kết nối. Kiểm tra địa chỉ dịch vụ và mạng. Dữ liệu chưa được cập nhật."}));

using enum CommandFate;

struct Outcome {
    const char* name;
    Failure failure;
    CommandFate fate;
};

class FateOfACommand : public testing::TestWithParam<Outcome> {};

TEST_P(FateOfACommand, IsUnknownUnlessItWasJudgedOrNeverLookedAt)
{
    EXPECT_EQ(fateOf(GetParam().failure), GetParam().fate);
}

INSTANTIATE_TEST_SUITE_P(Failures, FateOfACommand,
                         testing::Values(Outcome{"NoReply", APIError{0, "NETWORK", ""}, unknown},
                                         Outcome{"Unreadable", APIError{0, "INVALID_RESPONSE", ""}, unknown},
                                         Outcome{"ServiceFailed", APIError{500, "HTTP_ERROR", ""}, unknown},
                                         Outcome{"ServiceFailedWithCode", APIError{503, "down", ""}, unknown},
                                         Outcome{"GatewayTimedOut", APIError{504, "HTTP_ERROR", ""}, unknown},
                                         Outcome{"RequestTimedOut", APIError{408, "HTTP_ERROR", ""}, unknown},
                                         Outcome{"Redirected", APIError{302, "HTTP_ERROR", ""}, unknown},
                                         Outcome{"GivenUp", Cancelled{}, unknown},
                                         Outcome{"Refused", APIError{409, "balance_limit", ""}, refused},
                                         Outcome{"RefusedWithoutCode", APIError{400, "HTTP_ERROR", ""}, refused},
                                         Outcome{"Expired", APIError{401, "HTTP_ERROR", ""}, undecided},
                                         Outcome{"Inactive", APIError{403, "inactive_member", ""}, undecided},
                                         Outcome{"TooOften", APIError{429, "rate_limited", ""}, undecided},
                                         Outcome{"Busy", APIError{0, "BUSY", ""}, undecided},
                                         Outcome{"NoSession", APIError{0, "NO_SESSION", ""}, undecided},
                                         Outcome{"BadAmount", MoneyError::outOfRange, undecided}),
                         [](const auto& each) { return std::string{each.param.name}; });

}
