#include "LedgerCore/Domain/Settings/TransactionColorOptions.h"

#include <set>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

struct ChoiceCase {
    std::string name;
    std::optional<TextMap> company;
    std::optional<TextMap> member;
    std::string kind;
    std::string colorID;
};

class TransactionColorChoice : public testing::TestWithParam<ChoiceCase> {};

}

TEST_P(TransactionColorChoice, AsksTheMemberThenTheCompanyThenTheKind)
{
    const auto& each = GetParam();
    auto books = snapshot().build();
    books.company.transactionColors = each.company;
    books.currentMember.transactionColors = each.member;
    EXPECT_EQ(TransactionColorOptions::of(each.kind, books).id, each.colorID);
}

INSTANTIATE_TEST_SUITE_P(
    Choices, TransactionColorChoice,
    testing::Values(ChoiceCase{"NobodyChoseIncome", {}, {}, "income", "teal"},
                    ChoiceCase{"NobodyChoseExpense", {}, {}, "expense", "rust"},
                    ChoiceCase{"NobodyChoseDividend", TextMap{}, TextMap{}, "dividend", "rose"},
                    ChoiceCase{"KindOfALaterService", {}, {}, "merger", "graphite"},
                    ChoiceCase{"Company", TextMap{{"income", "ink"}}, {}, "income", "ink"},
                    ChoiceCase{"MemberBeforeCompany", TextMap{{"income", "ink"}}, TextMap{{"income", "olive"}},
                               "income", "olive"},
                    ChoiceCase{"MemberChoseAnotherKind", TextMap{{"income", "ink"}}, TextMap{{"expense", "olive"}},
                               "income", "ink"},
                    ChoiceCase{"UnknownColourOfTheMember", TextMap{{"income", "ink"}}, TextMap{{"income", "mauve"}},
                               "income", "ink"},
                    ChoiceCase{"UnknownColourOfTheCompany", TextMap{{"income", ""}}, {}, "income", "teal"}),
    [](const auto& each) { return each.param.name; });

TEST(TransactionColorOptions, AreToldApartByIdAndByNameInEveryLanguage)
{
    for (const auto* language : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        std::set<std::string_view> ids;
        std::set<std::string_view> names;
        for (const auto& option : TransactionColorOptions::all()) {
            EXPECT_TRUE(ids.insert(option.id).second) << option.id;
            EXPECT_FALSE(option.names.text(language).empty()) << option.id;
            EXPECT_TRUE(names.insert(option.names.text(language)).second) << option.id << " in " << language;
        }
    }
}
