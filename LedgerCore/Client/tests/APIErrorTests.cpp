#include "LedgerCore/Client/Errors/APIError.h"

#include <algorithm>
#include <set>
#include <string_view>

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

/// What a code of the service is about, in words that only one message has.
struct Said {
    const char* code;
    std::string_view words;
};

const Said saidOfCodes[] = {
    {"invitation_used", "cannot be revoked"},
    {"company_rejected", "was not approved"},
    {"financial_settings_revision_conflict", "Financial settings have changed"},
    {"financial_settings_revision_limit", "supported version limit"},
    {"financial_settings_initialized", "Initialization cannot be repeated"},
    {"financial_start_date_conflict", "start date is later than"},
    {"financial_before_start_date", "predates the confirmed bookkeeping start date"},
    {"financial_opening_date_mismatch", "Record opening balances on"},
    {"financial_opening_exists", "already has an active opening balance"},
    {"contributions_disabled", "disabled new capital contributions"},
    {"dividends_disabled", "disabled new allocations and advances"},
    {"capital_date_order", "earlier than a recorded capital action"},
    {"capital_baseline_overlap", "historical contribution range"},
    {"capital_baseline_boundary", "historical contribution range"},
    {"capital_baseline_conflict", "historical contribution range"},
    {"capital_baseline_coverage", "historical contribution range"},
    {"capital_correction_required", "Correct this contribution on the Capital page"},
    {"capital_ownership_missing", "No complete ownership allocation"},
    {"capital_integrity", "in capital records could not be verified"},
    {"capital_amount_limit", "resulting account balance"},
    {"dividend_revision_conflict", "Dividend records have changed"},
    {"dividend_date_order", "earlier than a recorded dividend action"},
    {"dividend_dependencies", "linked payments, offsets, or returns"},
    {"dividend_overapplication", "exceeds unpaid dividends"},
    {"dividend_overpayment", "exceeds unpaid dividends"},
    {"dividend_correction_required", "Correct this record on the Dividends page"},
    {"dividend_integrity", "Dividend record links are incomplete"},
    {"dividend_amount_limit", "resulting account balance"},
    {"insufficient_funds", "employee fund has insufficient balance"},
    {"nonzero_balance", "balance is not zero"},
    {"invalid_invitation", "does not match your email"},
    {"email_exists", "email is already registered"},
    {"already_reversed", "already been reversed"},
    {"transaction_reversed", "already been reversed"},
    {"unsupported_attachment", "attachment format is unsupported"},
    {"inactive_member", "member account is inactive"},
    {"balance_limit", "resulting account balance"},
    {"history_acknowledgement_required", "before handing it over"},
    {"CATEGORY_ORDER_CHANGED", "category order has changed"},
    {"CATEGORY_PARENT_INVALID", "at most two levels"},
    {"CATEGORY_PARENT_INACTIVE", "parent category is inactive"},
    {"CATEGORY_HAS_ACTIVE_CHILDREN", "active subcategories"},
    {"invalid_refund_original", "Select an unreversed income"},
    {"refund_original_unavailable", "Select an unreversed income"},
    {"refund_reference_required", "Select an unreversed income"},
    {"duplicate_refund", "refund reference is already recorded"},
    {"refunds_exist", "original income has linked refunds"},
};

TEST(FriendlyMessage, OfAServiceCodeSaysWhatItIsAboutAtEveryStatus)
{
    for (const auto& [code, words] : saidOfCodes) {
        const auto has = [&](const WordRow& row) { return row.english.contains(words); };
        EXPECT_EQ(std::ranges::count_if(serviceMessages().rows(), has), 1) << words;
        for (const int status : {0, 400, 401, 403, 409, 500}) {
            const auto message = APIError{status, code, ""}.friendlyMessage("en-US");
            EXPECT_TRUE(message.contains(words)) << code << " at " << status << ": " << message;
        }
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

TEST(ServiceMessages, HoldEveryKeyThatAStatusOrTheClientItselfCanHave)
{
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
