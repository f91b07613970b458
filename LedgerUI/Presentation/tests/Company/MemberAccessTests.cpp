#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Company/GrantMatrix.h"
#include "LedgerUI/Presentation/Company/InviteForm.h"
#include "LedgerUI/Presentation/Company/MemberAccess.h"

namespace {

constexpr auto english = "en-US";
constexpr std::size_t view = 0;
constexpr std::size_t income = 1;
constexpr std::size_t expense = 2;
constexpr std::size_t exchange = 5;

/// An owner with everything, an administrator who may do nothing on the vault, and an employee.
SnapshotBuilder books()
{
    SnapshotBuilder builder;
    builder.permissions({Permission::all.begin(), Permission::all.end()});
    builder.account("bank", {"USD"}).employeeAccount("float", {"USD"}, "m3").account("vault", {"USD"}).grantAll();
    auto admin = SnapshotBuilder::person("m2", "Ana", "admin");
    admin.permissions = {{"manageCompany", "viewCapital"}};
    admin.accountGrants = {{{"bank", {"view", "income"}}, {"float", {"view"}}}};
    auto employee = SnapshotBuilder::person("m3", "Rizky");
    employee.permissions = {{"exportData"}};
    employee.accountGrants = {{{"bank", {"view"}}, {"vault", {"view", "expense"}}}};
    return builder.member(admin).member(employee);
}

LedgerSnapshot seenBy(std::size_t member)
{
    auto snapshot = books().build();
    snapshot.currentMember = snapshot.members[member];
    return snapshot;
}

const GrantRow& rowOf(const std::vector<GrantRow>& rows, std::string_view account)
{
    return *std::ranges::find(rows, account, &GrantRow::accountID);
}

using Refusal = MembershipRules::Refusal;
using MemberAccess::draftOf;

}

TEST(MemberAccess, GivesTheSightOfAnAccountWithEveryActionAndTakesAllWithIt)
{
    const auto saved = books().build().members[2];
    auto draft = MemberAccess::withAction(draftOf(saved), "float", "income", true);
    EXPECT_TRUE(draft.grantsAction("view", "float"));
    EXPECT_EQ(MemberAccess::changes(saved, draft), 2U);
    draft = MemberAccess::withAction(draft, "vault", "view", false);
    EXPECT_FALSE(draft.grantsAction("expense", "vault"));
    EXPECT_EQ(MemberAccess::changes(saved, draft), 4U);
    draft = MemberAccess::withAction(draft, "float", "view", false);
    draft = MemberAccess::withAction(draft, "vault", "expense", true);
    EXPECT_EQ(draft, draftOf(saved)) << "taken back, nothing is changed";
}

TEST(MemberAccess, SendsOnlyWhatDiffers)
{
    const auto snapshot = books().build();
    const auto& saved = snapshot.members[2];
    EXPECT_EQ(MemberAccess::update(saved, draftOf(saved), snapshot), MemberUpdate{});
    auto draft = MemberAccess::withAction(draftOf(saved), "float", "income", true);
    const auto grants = MemberAccess::update(saved, draft, snapshot);
    EXPECT_FALSE(grants.role || grants.permissions || grants.active || grants.accountIDs);
    EXPECT_EQ(
        grants.accountGrants,
        (std::vector<AccountGrant>{{"bank", {"view"}}, {"float", {"view", "income"}}, {"vault", {"view", "expense"}}}));
    draft = draftOf(saved);
    draft.role = "finance";
    draft.permissions.insert("viewCompany");
    const auto others = MemberAccess::update(saved, draft, snapshot);
    EXPECT_EQ(others.role, "finance");
    EXPECT_EQ(others.permissions, (std::vector<std::string>{"viewCompany", "exportData"}));
    EXPECT_FALSE(others.accountGrants);
}

TEST(MemberAccess, ReadsTheOlderListOfAccountsAsTheRightToSeeThem)
{
    auto old = SnapshotBuilder::person("m9", "Old");
    old.accountIDs = {"bank"};
    EXPECT_TRUE(draftOf(old).grantsAction("view", "bank"));
    EXPECT_EQ(MemberAccess::changes(old, draftOf(old)), 0U);
}

TEST(MemberAccess, KeepsBothChangesWhereTwoPeopleChangeTheSameMember)
{
    const auto before = books().build().members[2];
    auto mine = MemberAccess::withAction(draftOf(before), "bank", "expense", true);
    mine.permissions.erase("exportData");
    auto now = before;
    now.role = "finance";
    now.permissions = {{"exportData", "viewCapital"}};
    now.accountGrants = {{{"bank", {"view", "income"}}}}; // the vault is gone
    const auto both = MemberAccess::rebased(mine, before, now);
    EXPECT_EQ(both.role, "finance");
    EXPECT_EQ(both.permissions, (AccessDraft::Words{"viewCapital"}));
    EXPECT_EQ(both.grants.at("bank"), (AccessDraft::Words{"view", "income", "expense"}));
    EXPECT_FALSE(both.grants.contains("vault"));
    EXPECT_EQ(MemberAccess::rebased(draftOf(before), before, now), draftOf(now)) << "nothing of mine is in the way";
}

TEST(MemberAccess, SaysWhyTheRulesRefuseAChange)
{
    const auto asAdmin = seenBy(1);
    const auto& owner = asAdmin.members[0];
    const auto& admin = asAdmin.members[1];
    const auto& employee = asAdmin.members[2];
    EXPECT_EQ(MemberAccess::whyNotRole(employee, "owner", asAdmin), Refusal::ownersOnly);
    EXPECT_EQ(MemberAccess::whyNotRole(employee, "finance", asAdmin), std::nullopt);
    EXPECT_EQ(MemberAccess::whyNotPermission(employee, "exportCapital", asAdmin), Refusal::notHeld);
    EXPECT_EQ(MemberAccess::whyNotPermission(employee, "exportData", asAdmin), std::nullopt) << "it is taken away";
    EXPECT_EQ(MemberAccess::whyNotPermission(admin, "exportData", asAdmin), Refusal::ownRise);
    EXPECT_EQ(MemberAccess::whyNotAction(employee, "bank", "income", asAdmin), std::nullopt);
    EXPECT_EQ(MemberAccess::whyNotAction(employee, "bank", "expense", asAdmin), Refusal::notHeld);
    EXPECT_EQ(MemberAccess::whyNotAction(owner, "bank", "income", asAdmin), Refusal::ownersOnly);
    EXPECT_EQ(MemberAccess::whyNotActive(employee, false, asAdmin), std::nullopt);

    const auto asOwner = books().build();
    EXPECT_EQ(MemberAccess::whyNotAction(owner, "bank", "income", asOwner), Refusal::lastOwner);
    EXPECT_EQ(MemberAccess::whyNotActive(owner, false, asOwner), Refusal::lastOwner);
    EXPECT_EQ(MemberAccess::whyNotRole(InviteForm::nobody(), "owner", asAdmin), Refusal::ownersOnly);
    EXPECT_EQ(MemberAccess::whyNotAction(InviteForm::nobody(), "bank", "income", asOwner), std::nullopt);
}

TEST(GrantMatrix, ShowsWhatIsGrantedAndWhatCannotBe)
{
    const auto snapshot = books().build();
    const auto& employee = snapshot.members[2];
    const auto rows = GrantMatrix::rows(employee, draftOf(employee), snapshot, english);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_TRUE(rowOf(rows, "vault").cells[expense].isGranted);
    EXPECT_EQ(rowOf(rows, "vault").cells[expense].spoken, QStringLiteral("vault, Expense: granted"));
    EXPECT_FALSE(rowOf(rows, "float").cells[exchange].isMeaningful);
    EXPECT_EQ(rowOf(rows, "float").cells[exchange].whyNot, QStringLiteral("This account has no use for that right."));
    // An owner has every right on every account: even what means nothing there is shown, and is theirs to keep.
    const auto& owner = snapshot.members[0];
    const auto own = GrantMatrix::rows(owner, draftOf(owner), snapshot, english);
    EXPECT_TRUE(rowOf(own, "float").cells[exchange].isGranted);
    EXPECT_EQ(rowOf(own, "bank").cells[income].whyNot, QStringLiteral("At least one owner has to keep this right."));
}

TEST(GrantMatrix, LeavesOutArchivedAccountsOnWhichNothingIsGranted)
{
    auto snapshot = books().build();
    snapshot.accounts[0].archived = snapshot.accounts[1].archived = true;
    const auto& employee = snapshot.members[2];
    const auto rows = GrantMatrix::rows(employee, draftOf(employee), snapshot, english);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].accountID, "bank") << "something is granted on it";
}

TEST(GrantMatrix, TogglesCellsRowsAndColumnsAsFarAsTheyMayChange)
{
    const auto asAdmin = seenBy(1);
    const auto& employee = asAdmin.members[2];
    const auto saved = draftOf(employee);
    const auto rows = GrantMatrix::rows(employee, saved, asAdmin, english);
    const auto at = [&](std::string_view account) {
        return static_cast<std::size_t>(&rowOf(rows, account) - rows.data());
    };
    EXPECT_TRUE(GrantMatrix::toggled(saved, rows, at("bank"), income).grantsAction("income", "bank"));
    EXPECT_EQ(GrantMatrix::toggled(saved, rows, at("bank"), expense), saved) << "the administrator does not hold it";
    const auto whole = GrantMatrix::rowToggled(saved, rows, at("bank"));
    EXPECT_EQ(whole.grants.at("bank"), (AccessDraft::Words{"view", "income"}));
    const auto again = GrantMatrix::rows(employee, whole, asAdmin, english);
    EXPECT_FALSE(GrantMatrix::rowToggled(whole, again, at("bank")).grants.contains("bank"));
    const auto seen = GrantMatrix::columnToggled(saved, rows, view);
    EXPECT_TRUE(seen.grantsAction("view", "float"));
    EXPECT_TRUE(seen.grantsAction("expense", "vault")) << "an account that the giver may not touch stays as it is";
}

TEST(InviteForm, SaysWhatIsMissingOnceItIsSent)
{
    auto form = InviteForm::fresh();
    EXPECT_TRUE(form.messages(english).empty());
    form.isChecked = true;
    EXPECT_EQ(form.messages(english).size(), 2U);
    EXPECT_FALSE(form.hasChanges());
    form.name = "  Rini ";
    form.email = " rini@example.com ";
    form.access = MemberAccess::withAction(form.access, "bank", "income", true);
    EXPECT_TRUE(form.messages(english).empty());
    EXPECT_EQ(form.command(books().build()), (Invite{.name = "Rini",
                                                     .email = "rini@example.com",
                                                     .role = "employee",
                                                     .accountIDs = {"bank"},
                                                     .permissions = {},
                                                     .accountGrants = {{"bank", {"view", "income"}}}}));
}
