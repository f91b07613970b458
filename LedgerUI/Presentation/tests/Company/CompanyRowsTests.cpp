#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/TimeZone.h"
#include "LedgerUI/Presentation/Company/CompanyProfile.h"
#include "LedgerUI/Presentation/Company/CompanyTabs.h"
#include "LedgerUI/Presentation/Company/MemberRows.h"
#include "LedgerUI/testing/CompanyBooks.h"

namespace {

constexpr auto english = "en-US";

std::string texts(const PlainRow& row)
{
    QStringList all;
    for (const auto& cell : row.cells)
        all << cell.text;
    return all.join(QStringLiteral(" | ")).toStdString();
}

PendingInvitation invitation(std::string expiresAt, std::string status = "pending")
{
    return {.id = "i",
            .name = "Rini",
            .email = "r@x.id",
            .role = "finance",
            .permissions = {},
            .accountGrants = {},
            .createdAt = "2026-11-08T02:00:00.000Z",
            .expiresAt = std::move(expiresAt),
            .status = std::move(status)};
}

QString expiryOf(const PendingInvitation& pending)
{
    return MemberRows::invitations({pending}, "2026-11-20", english).front().cells.back().text;
}

LedgerSnapshot asEmployee()
{
    auto snapshot = companyBooks().build();
    snapshot.currentMember = snapshot.members[3];
    return snapshot;
}

}

TEST(MemberRows, SayWhoIsWhoAndHowMuchTheySee)
{
    auto snapshot = companyBooks().build();
    const auto rows = MemberRows::members(snapshot, english);
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(texts(rows[0]), "Budi Santoso (you) | m1@example.com | Owner | 4 / 4 | Active");
    EXPECT_EQ(texts(rows[2]), "Nguyễn Thị Thanh Hương | m3@example.com | Partner | 2 / 4 | Active");
    EXPECT_EQ(rows[2].cells[3].spoken, QStringLiteral("Sees 2 of 4 accounts"));
    EXPECT_TRUE(texts(rows[4]).ends_with("Deactivated"));
    snapshot.accounts[1].archived = true;
    EXPECT_EQ(MemberRows::members(snapshot, english)[2].cells[3].text, QStringLiteral("1 / 3"));
}

TEST(MemberRows, SayWhenAnInvitationExpires)
{
    const TimeZone utc{"UTC0"};
    EXPECT_EQ(expiryOf(invitation("2026-12-04T02:00:00.000Z")), QStringLiteral("in 14 days, 4 Dec"));
    EXPECT_EQ(expiryOf(invitation("2026-11-21T02:00:00.000Z")), QStringLiteral("in 1 day, 21 Nov"));
    EXPECT_EQ(expiryOf(invitation("2026-11-20T22:00:00.000Z")), QStringLiteral("today, 20 Nov"));
    EXPECT_EQ(expiryOf(invitation("2026-11-19T02:00:00.000Z", "expired")), QStringLiteral("expired, 19 Nov"));
    EXPECT_EQ(expiryOf(invitation("2026-11-19T02:00:00.000Z")), QStringLiteral("expired, 19 Nov"))
        << "it was listed on an earlier day";
}

TEST(MemberRows, CountTheDaysOfAnInvitationWhereThePersonIs)
{
    const TimeZone jakarta{"WIB-7"};
    EXPECT_EQ(expiryOf(invitation("2026-11-20T18:30:00.000Z")), QStringLiteral("in 1 day, 21 Nov"));
    auto lateSent = invitation("2026-12-04T02:00:00.000Z");
    lateSent.createdAt = "2026-11-07T22:00:00.000Z";
    EXPECT_EQ(MemberRows::invitations({lateSent}, "2026-11-20", english).front().cells[3].text,
              QStringLiteral("8 Nov"));
}

TEST(CompanyTabs, LeaveOutWhatTheMemberMayNot)
{
    EXPECT_EQ(CompanyTabs::of(asEmployee()), (std::vector{CompanyTabs::profile, CompanyTabs::access}));
    auto books = companyBooks().build();
    EXPECT_EQ(CompanyTabs::of(books).front(), CompanyTabs::members);
    EXPECT_EQ(CompanyTabs::of(books).back(), CompanyTabs::audit);
    books.currentMember.role = MemberRole::admin;
    EXPECT_EQ(CompanyTabs::of(books).back(), CompanyTabs::profile);
}

TEST(MemberRows, PutOnesOwnRightsIntoWords)
{
    const auto access = MemberRows::ownAccess(asEmployee(), english);
    EXPECT_EQ(access.role, QStringLiteral("Employee"));
    EXPECT_EQ(access.permissions, QStringLiteral("No company-wide rights."));
    ASSERT_EQ(access.accounts.size(), 1U);
    EXPECT_EQ(texts(access.accounts.front()), "Kas kecil – Rizky Pratama | View, Expense");
    EXPECT_EQ(access.whomToAsk, QStringLiteral("For more rights, ask those who manage the company: Budi Santoso."));
}

TEST(CompanyProfile, KeepsTheOrderInWhichCountriesWereChosen)
{
    auto snapshot = companyBooks().build();
    snapshot.company.countries = {"VN", "ID"};
    auto profile = CompanyProfile::of(snapshot);
    EXPECT_FALSE(profile.withCountries({"ID", "VN"}).update(snapshot));
    profile = profile.withCountries({"CN", "ID", "VN"});
    EXPECT_EQ(profile.update(snapshot)->countries, (std::vector<std::string>{"VN", "ID", "CN"}));
    EXPECT_EQ(profile.withCountries({"CN", "ID"}).countries, (std::vector<std::string>{"ID", "CN"}));
    profile.name = " ";
    EXPECT_TRUE(profile.messages(english).contains(CompanyProfile::Field::name));
}

TEST(CompanyProfile, KeepsWhatIsTypedWhereSomebodyElseChangedAnotherField)
{
    const CompanyProfile before{.name = "Kopi", .countries = {"ID"}, .locale = "id-ID"};
    const CompanyProfile typed{.name = "Kopi Baru", .countries = {"ID"}, .locale = "id-ID"};
    const CompanyProfile now{.name = "Kopi", .countries = {"ID", "VN"}, .locale = "id-ID"};
    EXPECT_EQ(typed.rebased(before, now),
              (CompanyProfile{.name = "Kopi Baru", .countries = {"ID", "VN"}, .locale = "id-ID"}));
}
