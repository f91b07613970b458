#include <array>
#include <functional>
#include <set>
#include <string>

#include <QAccessible>
#include <gtest/gtest.h>

#include "LedgerUI/Screens/Company/CompanyView.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/testing/CompanyBooks.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/WindowUnderTest.h"

// Every screen in every language in the smallest window: nothing is cut, every control has a name and a role, and Tab
// comes by all of them. ctest runs this once more at twice the scale and once with larger texts.

namespace {

constexpr QSize smallest{900, 640};

PageRegistry builtPages()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<CompanyView>(WorkspacePage::company);
    return pages;
}

SnapshotBuilder books()
{
    auto person = SnapshotBuilder::person("m1", "Dewi Anggraini", "finance");
    person.email = "dewi.anggraini@en.demo.tallyfold.example";
    auto builder = SnapshotBuilder{}.currentMember(person);
    builder.account("Operating bank", {"IDR", "USD"}).account("Singapore", {"USD", "SGD"});
    builder.employeeAccount("Petty cash", {"IDR"}, "m1").grantAll();
    builder.category("power", "expense", "Electricity").category("sales", "income", "Sales");
    builder.balance("Operating bank", "IDR", 28'412'045'000);
    builder.expense("e1", "2026-11-19", "Operating bank", "IDR", 438'520'000, "power").note("November");
    builder.income("i1", "2026-11-18", "Singapore", "USD", 1'200'000, "sales");
    builder.transfer("t1", "2026-11-17", "Operating bank", "Petty cash", "IDR", 50'000'000, "funding");
    return builder;
}

struct Shown {
    std::string name;
    std::function<void(WindowUnderTest&)> open;
};

void PrintTo(const Shown& each, std::ostream* out)
{
    *out << each.name;
}

void signIn(WindowUnderTest& under)
{
    under.openDemonstration(books());
    under.screen.waitFor("ledgerTable");
}

void openEntry(WindowUnderTest& under, const char* kind)
{
    signIn(under);
    under.screen.choose("newEntryKinds", std::string{"newEntry."} + kind);
    under.screen.waitForFocus("transactionForm");
    under.screen.keys("Ctrl+Return"); // with every message
}

void chooseEntry(WindowUnderTest& under)
{
    signIn(under);
    under.screen.find("ledgerTable").setFocus();
    under.screen.keys("Ctrl+Home Down Return");
}

void openReversal(WindowUnderTest& under)
{
    chooseEntry(under);
    under.screen.press("reverseButton");
    under.screen.waitForFocus("reversalDialog");
    under.screen.keys("Ctrl+Return");
}

void saveInVain(WindowUnderTest& under)
{
    openEntry(under, "expense");
    under.screen.fill("entryAmount", "12");
    under.screen.press("entryCategory0");
    under.server.replace("POST v1/transactions", ServerReply::dropped());
    under.screen.keys("Ctrl+Return");
    under.screen.waitForFocus("entrySave");
}

void beRefusedAReversal(WindowUnderTest& under)
{
    chooseEntry(under);
    under.screen.press("reverseButton");
    under.screen.waitForFocus("reversalDialog");
    under.screen.type("Billed twice");
    under.server.replace("POST v1/transactions/i1/reverse", ServerReply::error(409, "refunds_exist"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntil("the refusal is there", [&] { return under.screen.says("Retry original request"); });
    EXPECT_FALSE(under.screen.shows("alertDialog")) << "the form says it already";
}

/// An entry that the search hides is announced above the list.
void recordElsewhere(WindowUnderTest& under)
{
    signIn(under);
    under.screen.fill("ledgerSearch", "November");
    under.screen.choose("newEntryKinds", "newEntry.expense");
    under.screen.waitForFocus("transactionForm");
    under.screen.fill("entryAmount", "12");
    under.screen.press("entryCategory0");
    under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"new"})"));
    auto after = books();
    after.expense("new", "2026-11-20", "Operating bank", "IDR", 1200, "power");
    under.server.replace("GET v1/snapshot", ServerReply::json(after.json()));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("transactionForm");
    under.screen.waitFor("ledgerTable");
}

void complain(WindowUnderTest& under)
{
    under.server.answer("POST v1/auth/login", ServerReply::error(401, "unauthorized"));
    std::ignore = resultOf(under.store.login("a@example.com", "x"));
    under.screen.waitFor("alertDialog");
}

void waitForAnswer(WindowUnderTest& under)
{
    under.server.answer("POST v1/auth/login", ServerReply::parked());
    under.screen.fill("email", "mira@example.com");
    under.screen.fill("password", "secret");
    under.screen.keys("Return");
    under.screen.waitFor("signInStop");
}

void askForTheDraft(WindowUnderTest& under)
{
    openEntry(under, "expense");
    under.screen.fill("entryAmount", "12");
    under.screen.keys("Esc");
    under.screen.waitFor("questionDialog");
}

void openExport(WindowUnderTest& under)
{
    under.openDemonstration(books().permissions({"viewCompany", "exportData"}));
    under.screen.waitFor("ledgerTable");
    under.screen.keys("Ctrl+E");
    under.screen.waitForFocus("ledgerExportDialog");
}

/// The company page at one of its tabs.
void openCompany(WindowUnderTest& under, const char* tab)
{
    under.server.replace("GET v1/invites", ServerReply::json(companyInvitations()));
    under.openDemonstration(companyBooks());
    under.screen.waitFor("ledgerNotice");
    under.screen.keys("Ctrl+2");
    for (int steps = 0; steps < 8 && !under.screen.shows(tab); ++steps)
        under.screen.keys("Ctrl+Tab");
    under.screen.waitFor(tab);
}

void openInvite(WindowUnderTest& under)
{
    openCompany(under, "membersTab");
    under.screen.press("companyPrimary");
    under.screen.waitForFocus("inviteDialog");
    under.screen.keys("Ctrl+Return"); // with every message
}

void invite(WindowUnderTest& under)
{
    openInvite(under);
    under.screen.fill("inviteName", "Rini");
    under.screen.fill("inviteEmail", "rini@example.com");
    under.server.replace("POST v1/invites", ServerReply::json(R"({"code":"K7QF-2M9D-XR4T"})"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitFor("invitationCodeDialog");
}

void openCompanyAsEmployee(WindowUnderTest& under)
{
    auto person = SnapshotBuilder::person("m1", "Rizky Pratama");
    person.permissions.emplace();
    under.openDemonstration(SnapshotBuilder{}.currentMember(person).account("Petty cash", {"IDR"}).grantAll());
    under.screen.waitFor("ledgerNotice");
    under.screen.keys("Ctrl+2 Ctrl+Tab");
    under.screen.waitFor("accessTab");
}

const std::array shown{
    Shown{"SignIn",
          [](auto& under) {
              under.screen.press("addressFold");
              under.screen.press("signIn");
          }},
    Shown{"SignInWaiting", waitForAnswer},
    Shown{"Alert", complain},
    Shown{"Keys", [](auto& under) { under.screen.keys("F1"); }},
    Shown{"Ledger", signIn},
    Shown{"LedgerDetail", chooseEntry},
    Shown{"Expense", [](auto& under) { openEntry(under, "expense"); }},
    Shown{"Transfer", [](auto& under) { openEntry(under, "transfer"); }},
    Shown{"Exchange", [](auto& under) { openEntry(under, "exchange"); }},
    Shown{"Refund", [](auto& under) { openEntry(under, "refund"); }},
    Shown{"Opening", [](auto& under) { openEntry(under, "opening"); }},
    Shown{"Uncertain", saveInVain},
    Shown{"Question", askForTheDraft},
    Shown{"Reversal", openReversal},
    Shown{"ReversalRefused", beRefusedAReversal},
    Shown{"RecordedElsewhere", recordElsewhere},
    Shown{"Period",
          [](auto& under) {
              signIn(under);
              under.screen.keys("Alt+Down");
              under.screen.waitForFocus("periodPopover");
          }},
    Shown{"Filters",
          [](auto& under) {
              signIn(under);
              under.screen.press("filterAll");
              under.screen.waitForFocus("filterPopover");
          }},
    Shown{"Totals",
          [](auto& under) {
              signIn(under);
              under.screen.press("totalsMore");
          }},
    Shown{"Day",
          [](auto& under) {
              openEntry(under, "expense");
              under.screen.press("entryDay");
              under.screen.waitForFocus("entryDayPopover");
          }},
    Shown{"Categories",
          [](auto& under) {
              openEntry(under, "expense");
              under.screen.press("entryAllCategories");
              under.screen.waitForFocus("entryCategoryPopover");
          }},
    Shown{"Export",
          [](auto& under) {
              openExport(under);
              under.screen.fill("exportFirstDay", "x");
          }},
    Shown{"ExportAccounts",
          [](auto& under) {
              openExport(under);
              under.screen.press("exportAccounts");
          }},
    Shown{"NothingFound",
          [](auto& under) {
              signIn(under);
              under.screen.fill("ledgerSearch", "zzz");
              under.screen.waitFor("noticeChangeFilter");
          }},
    Shown{"Members",
          [](auto& under) {
              openCompany(under, "membersTab");
              under.screen.pressRow("memberTable", "Hương");
              under.screen.press("permission.viewDividends");
          }},
    Shown{"Invitations", [](auto& under) { openCompany(under, "invitationsTab"); }},
    Shown{"Invite", openInvite},
    Shown{"InvitationCode", invite},
    Shown{"CompanyProfile", [](auto& under) { openCompany(under, "profileTab"); }},
    Shown{"OwnAccess", openCompanyAsEmployee},
    Shown{"NothingRecorded",
          [](auto& under) {
              auto fresh = SnapshotBuilder{}.account("Operating bank", {"IDR"}).grantAll();
              under.openDemonstration(fresh);
              under.screen.waitFor("ledgerNotice");
          }},
};

class Sweep : public testing::TestWithParam<std::tuple<Shown, std::string>> {};

}

TEST_P(Sweep, FindsNothingCutNamelessOrOutOfReach)
{
    const auto& [screen, language] = GetParam();
    WindowUnderTest under{builtPages(), smallest};
    screen.open(under);
    under.speak(language);
    auto& top = *visibleWindows().back();
    EXPECT_EQ(auditLabels(top), std::vector<std::string>{});
    EXPECT_EQ(auditControls(top), std::vector<std::string>{});
    EXPECT_EQ(auditTabOrder(top), std::vector<std::string>{});
    EXPECT_NE(under.screen.focus(), "nothing");
}

INSTANTIATE_TEST_SUITE_P(
    Screens, Sweep, testing::Combine(testing::ValuesIn(shown), testing::Values("zh-CN", "id-ID", "vi-VN", "en-US")),
    [](const auto& each) { return std::get<0>(each.param).name + "_" + std::get<1>(each.param).substr(0, 2); });
