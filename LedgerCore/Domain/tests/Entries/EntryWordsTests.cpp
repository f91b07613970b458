#include <gtest/gtest.h>

#include "LedgerCore/Domain/Entries/Drafts/EntryValidationError.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"

namespace {

struct MessageCase {
    std::string name;
    EntryValidationError error;
    std::string locale;
    std::string message;
};

class EntryValidationMessage : public testing::TestWithParam<MessageCase> {};

}

TEST(EntryWords, NameEveryCurrencyThatCanBeTyped)
{
    for (const auto& currency : CurrencyInfo::supported()) {
        const auto english = currency.code == "VND" ? std::string{"Vietnamese dong"} : currency.name;
        EXPECT_EQ(EntryWords::currency(currency.code, "en"), english);
        for (const std::string_view locale : {"zh-CN", "id-ID", "vi-VN"})
            EXPECT_NE(EntryWords::currency(currency.code, locale), currency.code);
    }
    EXPECT_EQ(EntryWords::currency("XYZ", "en"), "XYZ");
}

TEST(EntryWords, ChooseTheColumnByTheLocalesPrefix)
{
    EXPECT_EQ(EntryWords::text("discard", "en-GB"), "Discard");
    EXPECT_EQ(EntryWords::text("discard", "fr"), "放弃");
    EXPECT_EQ(EntryWords::text("noSuchWord", "en"), "noSuchWord");
}

TEST_P(EntryValidationMessage, ReadsAsOneSentence)
{
    EXPECT_EQ(GetParam().error.message(GetParam().locale), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, EntryValidationMessage,
    testing::Values(
        MessageCase{"PettyCashEnglish",
                    {EntryValidationError::ReserveInsufficient{536315000, "IDR"}},
                    "en-US",
                    "Insufficient petty cash. Available balance in this currency: IDR 5,363,150"},
        MessageCase{"PettyCashVietnamese",
                    {EntryValidationError::ReserveInsufficient{120050, "USD"}},
                    "vi-VN",
                    "Quỹ tạm ứng không đủ. Số dư khả dụng của loại tiền tệ này: USD 1.200,50"},
        MessageCase{"Unconfirmed",
                    {EntryValidationError::ReserveUnknown{"VND"}},
                    "en-US",
                    "Unable to confirm the petty cash balance. Refresh and try again. Currency: VND"},
        MessageCase{"Destination",
                    {EntryValidationError::DestinationRequired{}},
                    "en-US",
                    "Select a valid destination account again. Another account will not be selected automatically."},
        MessageCase{"Category", {EntryValidationError::CategoryRequired{}}, "en-US", "Select a purpose category"},
        MessageCase{
            "Account", {EntryValidationError::AccountRequired{}}, "id-ID", "Pilih rekening dana dan mata uang."},
        MessageCase{"Amount", {EntryValidationError::PositiveAmount{}}, "zh-CN", "请输入大于零的金额。"}),
    [](const auto& each) { return each.param.name; });
