#include "LedgerCore/Domain/Json.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/LedgerTransaction.h"

namespace {

constexpr auto wholeEntry = R"({"id":"t1","kind":"income","date":"2026-11-20","note":"a \"b\"\n","createdAt":"c",
    "memberID":"m","legs":[{"accountID":"a","currency":"USD","amountMinor":9007199254740993}],"attachmentIDs":[]})";

TEST(Json, DecodesARecordAndWritesTheSameKeysBack)
{
    const auto entry = Json::decode<LedgerTransaction>(wholeEntry);
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->legs.front().amountMinor, 9007199254740993);
    EXPECT_EQ(entry->note, "a \"b\"\n");
    EXPECT_EQ(Json::decode<LedgerTransaction>(Json::encode(*entry)), *entry);
    EXPECT_EQ(Json::encode(entry->legs.front()),
              R"({"accountID":"a","currency":"USD","amountMinor":9007199254740993})");
}

TEST(Json, ReadsEscapesInKeysAndTextsAndSkipsWhatItDoesNotKnow)
{
    const auto leg = Json::decode<LedgerLeg>(R"({"other":{"a":[1,"\"]"]},"acc\u006funtID":"caf\u00e9 \\ \u8d26",)"
                                             R"("currency":"","amountMinor":-1})");
    ASSERT_TRUE(leg.has_value());
    EXPECT_EQ(leg->accountID, "café \\ 账");
    EXPECT_EQ(leg->currency, "");
}

TEST(Json, ReadsLongArraysOfUnevenElementsWhole)
{
    std::vector<LedgerLeg> legs;
    for (int at = 0; at < 5000; ++at)
        legs.push_back({std::string(static_cast<std::size_t>(at % 90), 'a'), "USD", at});
    const auto text = Json::encode(legs);
    EXPECT_EQ(Json::decode<std::vector<LedgerLeg>>(text), legs);
    EXPECT_EQ(Json::consume<std::vector<LedgerLeg>>(text + "\n"), legs);
}

struct Refused {
    const char* name;
    const char* text;
    Json::DecodeError error;
};

class JsonRefusal : public testing::TestWithParam<Refused> {};

TEST_P(JsonRefusal, FailsTheWholeDocument)
{
    const auto leg = Json::decode<LedgerLeg>(GetParam().text);
    ASSERT_FALSE(leg.has_value());
    EXPECT_EQ(leg.error(), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, JsonRefusal,
    testing::Values(Refused{"MissingKey", R"({"accountID":"a","currency":"USD"})", Json::DecodeError::missingField},
                    Refused{"NullForRequired", R"({"accountID":null,"currency":"USD","amountMinor":1})",
                            Json::DecodeError::wrongType},
                    Refused{"TextForNumber", R"({"accountID":"a","currency":"USD","amountMinor":"1"})",
                            Json::DecodeError::wrongType},
                    Refused{"FractionForInteger", R"({"accountID":"a","currency":"USD","amountMinor":1.5})",
                            Json::DecodeError::wrongType},
                    Refused{"NumberTooLarge", R"({"accountID":"a","currency":"USD","amountMinor":9223372036854775808})",
                            Json::DecodeError::wrongType},
                    Refused{"ArrayForRecord", "[]", Json::DecodeError::wrongType},
                    Refused{"Scalar", "7", Json::DecodeError::wrongType},
                    Refused{"Empty", "", Json::DecodeError::malformed},
                    Refused{"CutShort", R"({"accountID":"a","currency":"USD",)", Json::DecodeError::malformed},
                    Refused{"TrailingText", R"({"accountID":"a","currency":"USD","amountMinor":1} x)",
                            Json::DecodeError::malformed},
                    Refused{"InvalidUtf8", "{\"accountID\":\"\xff\",\"currency\":\"USD\",\"amountMinor\":1}",
                            Json::DecodeError::malformed}),
    [](const auto& each) { return std::string{each.param.name}; });

}
