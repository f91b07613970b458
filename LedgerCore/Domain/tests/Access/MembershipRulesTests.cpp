#include "LedgerCore/Domain/Access/MembershipRules.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using enum MembershipRules::Refusal;
using Refused = std::optional<MembershipRules::Refusal>;
using Texts = std::vector<std::string>;
using Grants = std::vector<AccountGrant>;

Member person(const std::string& id, const std::string& role, Texts permissions, Grants grants = {})
{
    auto member = SnapshotBuilder::person(id, id, role);
    member.permissions = std::move(permissions);
    member.accountGrants = std::move(grants);
    return member;
}

/// Lin and Huong own the company; Huong alone holds exports, Lin alone openings on the bank. Dewi manages without
/// seeing capital or the vault. Rizky works with the drawer. Kenji left; he saw capital.
struct Company {
    std::vector<Member> members{
        person("lin", "owner", {"viewCompany", "manageCompany", "viewCapital", "viewDividends", "postDividends"},
               {{"bank", {"view", "income", "opening"}}, {"vault", {"view", "income"}}, {"drawer", {"transferIn"}}}),
        person("huong", "owner", {"viewCompany", "manageCompany", "viewCapital", "viewDividends", "exportData"},
               {{"bank", {"view", "income"}}, {"vault", {"view", "income"}}}),
        person("dewi", "admin", {"manageCompany", "viewDividends"},
               {{"bank", {"view", "income"}}, {"drawer", {"transferIn"}}}),
        person("rizky", "employee", {}, {{"drawer", {"view", "expense"}}, {"vault", {"view"}}}),
        person("kenji", "partner", {"viewCapital"}),
    };
    std::vector<Account> accounts = [] {
        std::vector<Account> all(3);
        all[0].id = "bank";
        all[1].id = "vault";
        all[2].id = "drawer";
        return all;
    }();

    Company() { member("kenji").active = false; }

    Member& member(std::string_view id) { return *std::ranges::find(members, id, &Member::id); }

    Refused change(std::string_view giver, std::string_view id, const MemberUpdate& update)
    {
        return MembershipRules::whyNotChange(member(id), update, member(giver), {members, accounts});
    }
};

MemberUpdate toRole(std::string role)
{
    return {.role = std::move(role), .accountIDs = {}, .active = {}, .permissions = {}, .accountGrants = {}};
}
MemberUpdate toActive(bool active)
{
    return {.role = {}, .accountIDs = {}, .active = active, .permissions = {}, .accountGrants = {}};
}
MemberUpdate toPermissions(Texts permissions)
{
    return {.role = {}, .accountIDs = {}, .active = {}, .permissions = std::move(permissions), .accountGrants = {}};
}
MemberUpdate toGrants(Grants grants)
{
    return {.role = {}, .accountIDs = {}, .active = {}, .permissions = {}, .accountGrants = std::move(grants)};
}
MemberUpdate toAccounts(Texts ids)
{
    return {.role = {}, .accountIDs = std::move(ids), .active = {}, .permissions = {}, .accountGrants = {}};
}

struct ChangeCase {
    const char* name;
    const char* giver;
    const char* member;
    MemberUpdate update;
    Refused refused;
};

class MemberChange : public testing::TestWithParam<ChangeCase> {};

TEST_P(MemberChange, IsAllowedOrRefusedForItsReason)
{
    Company company;
    const auto& each = GetParam();
    EXPECT_EQ(company.change(each.giver, each.member, each.update), each.refused);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, MemberChange,
    testing::Values(
        ChangeCase{"AnEmployeeManagesNobody", "rizky", "dewi", toActive(false), notManager},
        ChangeCase{"NorThemselves", "rizky", "rizky", toPermissions({}), notManager},
        ChangeCase{"AManagerSendsSomebodyAway", "dewi", "rizky", toActive(false), {}},
        ChangeCase{"NoSuchRole", "lin", "rizky", toRole("president"), unknownRole},
        ChangeCase{"NoSuchPermission", "lin", "rizky", toPermissions({"viewCompany", "fly"}), unknownPermission},
        ChangeCase{"NoSuchAction", "lin", "rizky", toGrants({{"bank", {"view", "approve"}}}), unknownAction},
        ChangeCase{"NoSuchAccount", "lin", "rizky", toGrants({{"moon", {"view"}}}), unknownAccount},
        ChangeCase{"NoSuchAccountOfOld", "lin", "rizky", toAccounts({"moon"}), unknownAccount},
        ChangeCase{"AccountUnknownToTheGiver", "dewi", "kenji", toGrants({{"vault", {"view"}}}), unknownAccount},
        ChangeCase{"MoreOnAnAccountUnknownToTheGiver", "dewi", "rizky", toGrants({{"vault", {"view", "income"}}}),
                   unknownAccount},
        ChangeCase{"WhatStoodThere", "dewi", "rizky", toGrants({{"vault", {"view"}}, {"bank", {"view"}}}), {}},
        ChangeCase{"GivesWhatTheGiverHolds", "dewi", "rizky", toGrants({{"bank", {"income"}}}), {}},
        ChangeCase{"GivesAnActionNotHeld", "dewi", "rizky", toGrants({{"bank", {"expense"}}}), notHeld},
        ChangeCase{"FundsWithoutSight", "dewi", "kenji", toGrants({{"drawer", {"transferIn"}}}), {}},
        ChangeCase{"SightWithoutSight", "dewi", "kenji", toGrants({{"drawer", {"view"}}}), notHeld},
        ChangeCase{"GivesAPermissionNotHeld", "dewi", "rizky", toPermissions({"viewCapital"}), notHeld},
        ChangeCase{"GivesTheWholeCompanyNotHeld", "dewi", "rizky", toPermissions({"viewCompany"}), notHeld},
        ChangeCase{"AnOwnerGivesNothingNotHeldEither", "huong", "rizky", toPermissions({"postDividends"}), notHeld},
        ChangeCase{"BringsBackMoreThanTheyHold", "dewi", "kenji", toActive(true), notHeld},
        ChangeCase{"BringsBackWhatTheyHold", "lin", "kenji", toActive(true), {}},
        ChangeCase{"GivesTheAbsentInAdvance", "dewi", "kenji", toPermissions({"viewCapital", "exportData"}), notHeld},
        ChangeCase{"TakesWhatTheyDoNotHold", "dewi", "kenji", toPermissions({}), {}},
        ChangeCase{"AnAdministratorTouchesNoOwner", "dewi", "lin", toActive(false), ownersOnly},
        ChangeCase{"AnAdministratorMakesNoOwner", "dewi", "rizky", toRole("owner"), ownersOnly},
        ChangeCase{"NorOneOfThemselves", "dewi", "dewi", toRole("owner"), ownersOnly},
        ChangeCase{"AnAdministratorMakesAdministrators", "dewi", "rizky", toRole("admin"), {}},
        ChangeCase{"OwnPermissionsDoNotGrow", "dewi", "dewi",
                   toPermissions({"manageCompany", "viewDividends", "exportData"}), ownRise},
        ChangeCase{"AnOwnersOwnGrantsDoNotGrow", "huong", "huong",
                   toGrants({{"bank", {"view", "income", "opening"}}, {"vault", {"view", "income"}}}), ownRise},
        ChangeCase{"OwnPermissionsMayShrink", "dewi", "dewi", toPermissions({"manageCompany"}), {}},
        ChangeCase{"AnOwnerStepsDownBesideAnother", "lin", "lin", toRole("employee"), lastOwner},
        ChangeCase{"WhatOneOwnerAloneHoldsStays", "lin", "huong", toPermissions({"viewCompany"}), lastOwner},
        ChangeCase{"WhatAnotherOwnerHoldsMayGo", "lin", "huong", toPermissions({"exportData"}), {}},
        ChangeCase{"AnActionThatOneOwnerAloneHoldsStays", "huong", "lin", toGrants({{"bank", {"view", "income"}}}),
                   lastOwner}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(MemberChange, LetsAnOwnerGoOnlyWhileAnotherHoldsTheSame)
{
    Company company;
    company.member("huong").permissions = company.member("lin").permissions;
    company.member("huong").accountGrants = company.member("lin").accountGrants;
    EXPECT_EQ(company.change("lin", "lin", toRole("employee")), std::nullopt);
    EXPECT_EQ(company.change("lin", "huong", toActive(false)), std::nullopt);
    company.member("huong").active = false;
    EXPECT_EQ(company.change("lin", "lin", toRole("employee")), lastOwner);
    EXPECT_EQ(company.change("lin", "lin", toActive(false)), lastOwner);
}

TEST(MemberChange, CountsWhatARoleGivesWithoutAList)
{
    Company company;
    company.member("rizky").permissions.reset(); // as programs of old left members
    company.member("rizky").accountGrants.reset();
    EXPECT_EQ(company.change("dewi", "rizky", toRole("admin")), notHeld) << "such an administrator views every account";
    EXPECT_EQ(company.change("huong", "rizky", toRole("owner")), notHeld) << "such an owner settles dividends";
    EXPECT_EQ(company.change("dewi", "rizky", toRole("finance")), std::nullopt);
}

TEST(MemberChange, LeavesWhatTheGiverDoesNotKnow)
{
    Company company;
    const auto after = MembershipRules::changed(
        company.member("rizky"), toGrants({{"bank", {"view", "view"}}, {"bank", {"income"}}, {"drawer", {}}}),
        company.member("dewi"));
    EXPECT_EQ(after.accountGrants, (Grants{{"bank", {"view", "income"}}, {"vault", {"view"}}}));
    EXPECT_EQ(after.permissions, Texts{});
    EXPECT_TRUE(after.active);
}

TEST(Invitation, GivesNoMoreThanAChangeWould)
{
    Company company;
    const auto invite = [&](std::string_view giver, const std::string& role, Texts permissions, Grants grants) {
        const Invite invitation{"New", "new@example.com", role, {}, std::move(permissions), std::move(grants)};
        return MembershipRules::whyNotInvite(invitation, company.member(giver), {company.members, company.accounts});
    };
    EXPECT_EQ(invite("dewi", "employee", {"viewDividends"}, {{"bank", {"view", "income"}}}), std::nullopt);
    EXPECT_EQ(invite("lin", "owner", {"viewCapital"}, {}), std::nullopt);
    EXPECT_EQ(invite("rizky", "employee", {}, {}), notManager);
    EXPECT_EQ(invite("dewi", "owner", {}, {}), ownersOnly);
    EXPECT_EQ(invite("dewi", "", {}, {}), unknownRole);
    EXPECT_EQ(invite("dewi", "employee", {"viewCapital"}, {}), notHeld);
    EXPECT_EQ(invite("dewi", "employee", {}, {{"vault", {"view"}}}), unknownAccount);
    EXPECT_EQ(invite("dewi", "employee", {}, {{"", {"view"}}}), unknownAccount);
    company.member("dewi").role = "finance";
    EXPECT_EQ(invite("dewi", "admin", {}, {}), aboveOwnRole);
    EXPECT_EQ(company.change("dewi", "dewi", toRole("admin")), ownRise);
}

}
