#include "LedgerUI/Presentation/Workspace/CompanyDirectory.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Settings/PasswordDraft.h"

namespace {

LedgerSnapshot lentera()
{
    auto books = SnapshotBuilder{}.companyName("PT Lentera").build();
    books.company.id = "c1";
    return books;
}

const std::vector<CompanyDirectory::Row> alone{{.id = "c1", .name = QStringLiteral("PT Lentera"), .isOpen = true}};

}

TEST(CompanyDirectory, ShowsTheOpenCompanyAloneUntilTheOthersAreKnown)
{
    EXPECT_EQ(CompanyDirectory::of(lentera(), {}, nullptr, "en-US").rows, alone);
}

TEST(CompanyDirectory, KeepsTheServicesOrderAndMarksTheOpenCompany)
{
    const CompanyChoices choices{.companies = {{"c2", "Samudra"}, {"c1", "PT Lentera"}}, .ownedCompanyCount = 1};
    const auto rows = CompanyDirectory::of(lentera(), choices, nullptr, "en-US").rows;
    EXPECT_EQ(rows, (std::vector<CompanyDirectory::Row>{
                        {.id = "c2", .name = QStringLiteral("Samudra"), .isOpen = false}, alone.front()}));
}

TEST(CompanyDirectory, ListsTheOpenCompanyAlsoWhenTheServiceLeavesItOut)
{
    const CompanyChoices choices{.companies = {{"c2", "Samudra"}}, .ownedCompanyCount = 0};
    EXPECT_EQ(CompanyDirectory::of(lentera(), choices, nullptr, "en-US").rows.front(), alone.front());
}

TEST(CompanyDirectory, NamesWhatAwaitsReview)
{
    const PendingCompanyRegistration pending{
        .status = "pending", .applicationID = "a", .companyName = "Teh", .email = "a@b.c"};
    EXPECT_EQ(CompanyDirectory::of(lentera(), {}, &pending, "en-US").pending, QStringLiteral("Teh (awaits review)"));
    const CompanyChoices choices{.companies = {{"c1", "PT Lentera"}, {"a", "Teh"}}, .ownedCompanyCount = 2};
    EXPECT_TRUE(CompanyDirectory::of(lentera(), choices, &pending, "en-US").pending.isEmpty()) << "it is open by now";
}

TEST(PasswordDraft, NamesWhatIsMissingAndWhoseFaultARefusalIs)
{
    using Field = PasswordDraft::Field;
    const auto problems = PasswordDraft{.current = "", .chosen = "seven c"}.problems("en-US");
    EXPECT_EQ(problems.at(Field::current), QStringLiteral("Enter the current password."));
    EXPECT_EQ(problems.at(Field::chosen), QStringLiteral("A password has at least 8 characters."));
    EXPECT_TRUE((PasswordDraft{.current = "x", .chosen = "eight ch"}.problems("en-US").empty()));
    EXPECT_TRUE(PasswordDraft::refusal(APIError{400, "invalid_verification", ""}, "en-US").contains(Field::current));
    EXPECT_TRUE(PasswordDraft::refusal(APIError{403, "forbidden", ""}, "en-US").empty());
}
