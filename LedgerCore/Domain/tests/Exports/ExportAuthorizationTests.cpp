#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Exports/ExportChanges.h"
#include "LedgerCore/Domain/Exports/LedgerExportAuthorization.h"
#include "LedgerCore/Domain/Exports/ReportExportAuthorization.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

/// The member sees bank and cash, not the safe. "move" is a transfer whose other leg lies on the safe.
LedgerSnapshot books()
{
    auto built = snapshot()
                     .account("bank", {"USD", "JPY"})
                     .account("cash", {"USD"})
                     .account("safe", {"USD"})
                     .permissions({"exportData", "manageCompany"})
                     .grant("bank", {"view"})
                     .grant("cash", {"view"})
                     .category("office", "expense", "Office")
                     .category("rent", "expense", "Rent", "office")
                     .member(SnapshotBuilder::person("m2", "Budi"))
                     .income("early", "2025-12-31", "bank", "USD", 100)
                     .expense("rent", "2026-01-01", "bank", "USD", 40, "rent")
                     .income("yen", "2026-01-31", "bank", "JPY", 700)
                     .transfer("move", "2026-01-20", "bank", "safe", "USD", 5)
                     .income("till", "2026-01-15", "cash", "USD", 9)
                     .build();
    built.transactions[1].attachmentIDs = {"r1"};
    built.attachments.emplace_back().id = "r1";
    built.attachments.emplace_back().id = "r2";
    return built;
}

/// January on all that is visible.
LedgerExportScope january()
{
    return {.startDate = "2026-01-01",
            .endDate = "2026-01-31",
            .accountIDs = {},
            .currencies = {},
            .kinds = {"income", "expense", "transfer"},
            .includesAllVisibleAccounts = true,
            .includesAllVisibleCurrencies = true};
}

/// January in dollars on the bank account.
LedgerExportScope bankDollars()
{
    auto scope = january();
    scope.accountIDs = {"bank"};
    scope.currencies = {"USD"};
    scope.includesAllVisibleAccounts = false;
    scope.includesAllVisibleCurrencies = false;
    return scope;
}

std::string selectedLegs(const LedgerSnapshot& whole, const LedgerExportScope& scope)
{
    const auto selection = LedgerExportSelection::create(whole, scope);
    if (!selection)
        return std::string{code(selection.error())};
    std::string text;
    for (const auto& entry : selection->snapshot.transactions) {
        for (const auto& leg : entry.legs)
            text += entry.id + ":" + leg.accountID + ":" + leg.currency + " ";
    }
    return text;
}

using Change = std::function<void(LedgerSnapshot&)>;

struct ChangeCase {
    const char* name;
    Change change;
    std::string_view code; // empty: the file may be written
};

std::string_view outcome(const std::expected<void, ExportRefusal>& validated)
{
    return validated ? std::string_view{} : code(validated.error());
}

void add(LedgerSnapshot& snapshot, const char* id, const char* date, LedgerLeg leg)
{
    auto entry = snapshot.transactions.back();
    entry.id = id;
    entry.date = date;
    entry.kind = "income";
    entry.legs = {std::move(leg)};
    snapshot.transactions.push_back(entry);
}

class LedgerExportAfter : public testing::TestWithParam<ChangeCase> {};

TEST_P(LedgerExportAfter, IsWrittenOnlyAsItWasPreviewed)
{
    const auto request = LedgerExportRequest::create(books(), bankDollars(), "en");
    ASSERT_TRUE(request.has_value());
    auto changed = books();
    GetParam().change(changed);
    EXPECT_EQ(outcome(request->authorization.validate(changed)), GetParam().code);
}

constexpr std::string_view scopeChanged = "LEDGER_EXPORT_SCOPE_CHANGED";
constexpr std::string_view dataChanged = "LEDGER_EXPORT_CHANGED";

INSTANTIATE_TEST_SUITE_P(
    Changes, LedgerExportAfter,
    testing::Values(
        ChangeCase{"Nothing", [](auto&) {}, ""},
        ChangeCase{"OtherCompany", [](auto& now) { now.company.id = "c2"; }, scopeChanged},
        ChangeCase{"OtherMember", [](auto& now) { now.currentMember.id = "m2"; }, scopeChanged},
        ChangeCase{"OtherUser", [](auto& now) { now.currentMember.userID = "u2"; }, scopeChanged},
        ChangeCase{"RightTaken", [](auto& now) { now.currentMember.permissions = {"viewCompany"}; }, "forbidden"},
        ChangeCase{"ReceiptNamesNoLongerAllowed", [](auto& now) { now.currentMember.permissions = {"exportData"}; },
                   dataChanged},
        ChangeCase{"Deactivated", [](auto& now) { now.currentMember.active = false; }, "forbidden"},
        ChangeCase{"AccountHidden",
                   [](auto& now) { now.currentMember.accountGrants->erase(now.currentMember.accountGrants->begin()); },
                   scopeChanged},
        ChangeCase{"NewEntry", [](auto& now) { add(now, "new", "2026-01-31", {"bank", "USD", 1}); }, dataChanged},
        ChangeCase{"EditedNote", [](auto& now) { now.transactions[1].note = "x"; }, dataChanged},
        ChangeCase{"RenamedCompany", [](auto& now) { now.company.name = "x"; }, dataChanged},
        ChangeCase{"RenamedAccount", [](auto& now) { now.accounts[0].name = "x"; }, dataChanged},
        ChangeCase{"RenamedMember", [](auto& now) { now.members[0].name = "x"; }, dataChanged},
        ChangeCase{"RenamedCategory", [](auto& now) { now.categories[1].names["en-US"] = "x"; }, dataChanged},
        ChangeCase{"NewReceipt", [](auto& now) { now.transactions[1].attachmentIDs.push_back("r2"); }, dataChanged},
        ChangeCase{"RenamedReceipt", [](auto& now) { now.attachments[0].name = "x"; }, dataChanged},
        ChangeCase{"EntryOutsideTheDays", [](auto& now) { add(now, "new", "2026-02-01", {"bank", "USD", 1}); }, ""},
        ChangeCase{"EntryOnAnotherAccount", [](auto& now) { add(now, "new", "2026-01-31", {"cash", "USD", 1}); }, ""},
        ChangeCase{"EntryInAnotherCurrency", [](auto& now) { add(now, "new", "2026-01-31", {"bank", "JPY", 1}); }, ""},
        ChangeCase{"Balances", [](auto& now) { now.accounts[0].balances["USD"] = 1; }, ""},
        ChangeCase{"OtherAccountsName", [](auto& now) { now.accounts[1].name = "x"; }, ""},
        ChangeCase{"UnusedCategoryAndReceipt",
                   [](auto& now) {
                       now.categories[0].archived = true;
                       now.attachments[1].name = "x";
                   },
                   ""}),
    [](const auto& each) { return std::string{each.param.name}; });

class ReportExportAfter : public testing::TestWithParam<ChangeCase> {};

TEST_P(ReportExportAfter, IsWrittenOnlyFromTheSameRecords)
{
    const auto report = ReportExportAuthorization::create(books(), "USD", std::nullopt);
    ASSERT_TRUE(report.has_value());
    auto changed = books();
    GetParam().change(changed);
    EXPECT_EQ(outcome(report->validate(changed)), GetParam().code);
}

void seeSafe(LedgerSnapshot& now)
{
    now.currentMember.accountGrants->push_back({"safe", {"view"}});
}

INSTANTIATE_TEST_SUITE_P(
    Changes, ReportExportAfter,
    testing::Values(
        ChangeCase{"Nothing", [](auto&) {}, ""},
        ChangeCase{"OtherMember", [](auto& now) { now.currentMember.id = "m2"; }, "REPORT_EXPORT_SCOPE_CHANGED"},
        ChangeCase{"AccountHidden", [](auto& now) { now.currentMember.accountGrants->pop_back(); }, "forbidden"},
        ChangeCase{"AccountAppeared", seeSafe, "REPORT_EXPORT_CHANGED"},
        ChangeCase{"StartDate", [](auto& now) { now.financialSettings.emplace().bookkeepingStartDate = "2026-01-01"; },
                   "REPORT_EXPORT_CHANGED"},
        ChangeCase{"InitializationMode",
                   [](auto& now) { now.financialSettings.emplace().initializationMode = "fromZero"; },
                   "REPORT_EXPORT_CHANGED"},
        ChangeCase{"AccountNoLongerHoldsTheCurrency", [](auto& now) { now.accounts[1].currencies = {"JPY"}; },
                   "forbidden"},
        ChangeCase{"EarlierEntry", [](auto& now) { add(now, "new", "2020-01-01", {"cash", "USD", 1}); },
                   "REPORT_EXPORT_CHANGED"},
        ChangeCase{"ParentRenamed", [](auto& now) { now.categories[0].names["en-US"] = "x"; }, "REPORT_EXPORT_CHANGED"},
        ChangeCase{"EntryInAnotherCurrency", [](auto& now) { add(now, "new", "2026-01-31", {"bank", "JPY", 1}); }, ""}),
    [](const auto& each) { return std::string{each.param.name}; });

}

TEST(LedgerExport, SelectsTheLegsThatTheMemberSeesInTheScope)
{
    EXPECT_EQ(selectedLegs(books(), january()), "rent:bank:USD yen:bank:JPY move:bank:USD till:cash:USD ");
    EXPECT_EQ(selectedLegs(books(), bankDollars()), "rent:bank:USD move:bank:USD ");
    auto scope = bankDollars();
    scope.kinds = {"expense"};
    EXPECT_EQ(selectedLegs(books(), scope), "rent:bank:USD ");
    scope.accountIDs = {"safe"};
    EXPECT_EQ(selectedLegs(books(), scope), "LEDGER_EXPORT_SCOPE_CHANGED");
    scope = bankDollars();
    scope.currencies = {"EUR"};
    EXPECT_EQ(selectedLegs(books(), scope), "LEDGER_EXPORT_SCOPE_CHANGED");
}

TEST(LedgerExport, PreviewsWhatTheFileHolds)
{
    const auto request = LedgerExportRequest::create(books(), january(), "vi");
    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->preview, (LedgerExportPreview{4, 4, 2, 1}));
    EXPECT_EQ(request->filename, "quillet-ledger-2026-01-01_2026-01-31.csv");
    EXPECT_EQ(std::ranges::count(request->content, '\n'), 5);
    EXPECT_NE(request->content.find("\"Rent (vi)\""), std::string::npos);
    EXPECT_EQ(request->authorization.evidence.members.size(), 1);

    auto none = january();
    none.kinds = {};
    EXPECT_EQ(LedgerExportRequest::create(books(), none, "en")->preview, LedgerExportPreview{});
}

TEST(ReportExport, OfPickedAccountsIsUnmovedByNewOnes)
{
    const auto picked = ReportExportAuthorization::create(books(), "USD", std::set<std::string, std::less<>>{"bank"});
    ASSERT_TRUE(picked.has_value());
    auto changed = books();
    seeSafe(changed);
    EXPECT_TRUE(picked->validate(changed).has_value());
    EXPECT_EQ(ReportExportAuthorization::create(books(), "USD", std::set<std::string, std::less<>>{"safe"}).error(),
              ExportRefusal::forbidden);
}

TEST(ReportExport, KeepsTheCategoryOfAnIncomeRefundedFromAnotherAccount)
{
    auto prepared = snapshot()
                        .account("bank", {"USD"})
                        .account("refunds", {"USD"})
                        .grantAll()
                        .category("sales", "income", "Sales")
                        .income("sale", "2026-01-01", "bank", "USD", 100, "sales")
                        .entry("back", EntryKind::refund, "2026-01-02", {{"refunds", "USD", -100}})
                        .build();
    prepared.transactions[1].originalTransactionID = "sale";
    const auto report =
        ReportExportAuthorization::create(prepared, "USD", std::set<std::string, std::less<>>{"refunds"});
    ASSERT_TRUE(report.has_value());
    EXPECT_TRUE(report->validate(prepared).has_value());

    auto renamed = prepared;
    renamed.categories[0].names["en-US"] = "Shop";
    EXPECT_EQ(outcome(report->validate(renamed)), "REPORT_EXPORT_CHANGED");
    auto hidden = prepared;
    hidden.transactions = {hidden.transactions[1]}; // the refund then stands under no category
    EXPECT_EQ(outcome(report->validate(hidden)), "REPORT_EXPORT_CHANGED");
}

TEST(LedgerExportScope, NarrowsToTheEntriesThatItNames)
{
    auto scope = january();
    scope.entryIDs = SharedList<std::string>{"move", "early", "till", "gone"};
    EXPECT_EQ(selectedLegs(books(), scope), "move:bank:USD till:cash:USD ")
        << "the days still hold, and what is not in the books is passed over";
    scope.entryIDs->clear();
    EXPECT_EQ(selectedLegs(books(), scope), "");
}

TEST(ExportChanges, NamesWhatCameWentAndReadsOtherwise)
{
    using Evidence = LedgerExportAuthorization::Evidence;
    const auto evidence = [](const LedgerSnapshot& shown) {
        return Evidence::of(*LedgerExportSelection::create(shown, january()));
    };
    const auto before = books();
    EXPECT_FALSE(ExportChanges::between(evidence(before), evidence(before)).any());
    auto now = books();
    now.transactions.pop_back(); // "till", and with it the account "cash"
    add(now, "new", "2026-01-31", {"bank", "USD", 1});
    add(now, "newer", "2026-01-31", {"bank", "USD", 2});
    now.transactions[1].note = "x";
    now.accounts[0].name = "Main bank";
    now.company.name = "Lentera";
    now.categories[1].names["en-US"] = "Housing";
    now.attachments[0].name = "bill.pdf";
    EXPECT_EQ(ExportChanges::between(evidence(before), evidence(now)),
              (ExportChanges{.added = 2,
                             .removed = 1,
                             .edited = 1,
                             .renamed = {{before.company.name, "Lentera"}, {before.accounts[0].name, "Main bank"}},
                             .hasOtherCategories = true,
                             .hasOtherReceipts = true}));
    auto forbidden = books();
    forbidden.currentMember.permissions = {"exportData"};
    EXPECT_TRUE(ExportChanges::between(evidence(before), evidence(forbidden)).hasOtherReceipts)
        << "the names of receipts may no longer be listed";
}

TEST(ExportChanges, TellsOfAReportWhatItsFiguresAreMadeOf)
{
    const auto evidence = [](const LedgerSnapshot& shown) {
        return ReportExportAuthorization::create(shown, "USD", std::nullopt)->evidence;
    };
    const auto before = books();
    auto now = books();
    add(now, "new", "2026-02-20", {"cash", "USD", 1});
    now.financialSettings.emplace().bookkeepingStartDate = "2026-01-01";
    now.accounts[1].balances["USD"] = 10; // shown by no report
    EXPECT_EQ(ExportChanges::between(evidence(before), evidence(now)),
              (ExportChanges{.added = 1, .hasOtherSettings = true}));
}
