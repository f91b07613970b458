#include "LedgerCore/Domain/Json/Json.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"

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

struct ViewedLeg {
    std::string_view accountID;
    std::optional<std::string_view> note;
    std::vector<std::string_view> tags;
};
BOOST_DESCRIBE_STRUCT(ViewedLeg, (), (accountID, note, tags))

TEST(Json, ViewsTextsWhereTheyStandAndWritesEscapedOnesOutInTheirPlace)
{
    std::string text =
        R"( {"accountID" : "plain"  ,"tags":["\\","","\u8d26x","a\"b\"","last"] ,"note":"\ud83d\ude00" } )";
    text.reserve(text.size() + Json::padding);
    const std::string_view whole = text;
    const auto leg = Json::view<ViewedLeg>(text);
    ASSERT_TRUE(leg.has_value());
    EXPECT_EQ(leg->accountID, "plain");
    EXPECT_EQ(leg->tags, (std::vector<std::string_view>{"\\", "", "账x", "a\"b\"", "last"}));
    EXPECT_EQ(leg->note, "😀");
    for (const auto each : {leg->accountID, leg->tags[0], leg->tags[2], leg->tags[4], *leg->note})
        EXPECT_TRUE(each.data() > whole.data() && each.data() + each.size() < whole.data() + whole.size()) << each;
}

struct Skimmed {
    Json::Unread<std::string> note;
    Json::Unread<std::vector<LedgerLeg>> legs;
    std::int64_t last = 0;
    std::optional<Json::Unread<std::map<std::string, bool, std::less<>>>> marks;
};
BOOST_DESCRIBE_STRUCT(Skimmed, (), (note, legs, last, marks))

std::string skimmed(const std::string& note, const std::string& legs)
{
    return R"({"note":)" + note + R"(,"legs":)" + legs + R"(,"last":7})";
}

std::string withUnknownKey(const std::string& value)
{
    return R"({"note":"","legs":[],"last":7,"later":)" + value + "}";
}

std::optional<Json::DecodeError> refusalOf(const std::string& text)
{
    const auto read = Json::decode<Skimmed>(text);
    return read ? std::nullopt : std::optional{read.error()};
}

TEST(Json, PassesOverFaultlessValuesThatAreNotRead)
{
    const std::string leg = R"({"amountMinor":-5,"accountID":"a\"]","later":[{}],"currency":""})";
    for (const auto& text :
         {skimmed(R"("")", "[]"), skimmed(R"("a \"]\" \u8d26")", "[" + leg + " , " + leg + "]"),
          R"({"marks":{"a":true,"\n":false},"note":"","legs":[ ] ,"last":7})" + std::string{},
          R"({"marks":null,"note":"","legs":[],"last":7})" + std::string{},
          withUnknownKey(R"([{"a":{},"b\n":[[1,-2.5e3],{}]},null,true,false,"\\",18446744073709551616])")}) {
        const auto read = Json::decode<Skimmed>(text);
        ASSERT_TRUE(read.has_value()) << text;
        EXPECT_EQ(read->last, 7) << text;
    }
}

TEST(Json, RefusesValuesThatAreNotReadWhenTheyAreBroken)
{
    const std::vector<std::string> broken{
        "[1,,2]",  "[1 2]", "[1,]", R"([{"a" 1}])", R"([{"a":1,}])", R"([{"a"}])",  R"([{1:2}])", "[{]}",
        "[tru]",   "[nul]", "[01]", "[1x]",         "[-]",           "[.5]",        "[x]",        R"(["\q"])",
        "[falsey", "[1",    "[}",   R"(["\u12"])",  "[\"a\nb\"]",    "[\"a\xff\"]", "[\"a\\\"]",  "[1]]"};
    for (const auto& value : broken) {
        EXPECT_EQ(refusalOf(withUnknownKey(value)), Json::DecodeError::malformed) << value;
        EXPECT_NE(refusalOf(skimmed(R"("")", value)), std::nullopt) << value;
    }
    constexpr std::size_t deep = 200'000;
    EXPECT_EQ(refusalOf(withUnknownKey(std::string(deep, '[') + std::string(deep, ']'))), Json::DecodeError::malformed);
    for (const auto* note : {R"("\q")", R"("\ud83d")", "\"a\nb\"", "\"\xff\""})
        EXPECT_EQ(refusalOf(skimmed(note, "[]")), Json::DecodeError::malformed) << note;
}

TEST(Json, RefusesValuesThatAreNotReadWhenTheyAreOfTheWrongKind)
{
    for (const auto& text :
         {skimmed("null", "[]"), skimmed("1", "[]"), skimmed("[]", "[]"), skimmed(R"("")", "null"),
          skimmed(R"("")", "{}"), skimmed(R"("")", R"("")"), skimmed(R"("")", "[1]"), skimmed(R"("")", "[null]"),
          skimmed(R"("")", R"([{"accountID":"a","currency":"USD","amountMinor":1.0}])"),
          skimmed(R"("")", R"([{"accountID":"a","currency":"USD","amountMinor":9223372036854775808}])"),
          R"({"note":"","legs":[],"last":7,"marks":{"a":1}})" + std::string{}})
        EXPECT_EQ(refusalOf(text), Json::DecodeError::wrongType) << text;
    EXPECT_EQ(refusalOf(R"({"note":"","last":7})"), Json::DecodeError::missingField);
    EXPECT_EQ(refusalOf(skimmed(R"("")", R"([{"accountID":"a","currency":"USD"}])")), Json::DecodeError::missingField);
}

TEST(Json, RefusesADocumentCutShortAnywhere)
{
    const std::string whole =
        R"({"later": [1, {"b": [true, null]}, "c\\"], "note": "a\"b", "legs": [ {"accountID": "", "currency":
            "\\", "amountMinor": 10} ], "last": 7})";
    ASSERT_EQ(refusalOf(whole), std::nullopt);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(refusalOf(whole.substr(0, length)), Json::DecodeError::malformed) << whole.substr(0, length);
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
