#include <array>
#include <set>
#include <string>

#include <QAccessible>
#include <QAction>
#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/Sweep.h"

// ctest runs this once more at twice the scale and once with larger texts.

namespace {

constexpr QSize smallest{900, 640};

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

const std::array shown{
    SweptScreen{"SignIn", ledgerPage,
                [](auto& under) {
                    under.screen.press("addressFold");
                    under.screen.press("signIn");
                }},
    SweptScreen{"SignInWaiting", ledgerPage, waitForAnswer},
    SweptScreen{"Alert", ledgerPage, complain},
    SweptScreen{"Keys", ledgerPage, [](auto& under) { under.screen.keys("F1"); }},
    SweptScreen{"Ledger", ledgerPage, signIn},
    SweptScreen{"LedgerByDay", ledgerPage,
                [](auto& under) {
                    signIn(under);
                    under.screen.press("byDayToggle");
                }},
    SweptScreen{"LedgerDetail", ledgerPage, chooseEntry},
    SweptScreen{"Expense", ledgerPage, [](auto& under) { openEntry(under, "expense"); }},
    SweptScreen{"Transfer", ledgerPage, [](auto& under) { openEntry(under, "transfer"); }},
    SweptScreen{"Exchange", ledgerPage, [](auto& under) { openEntry(under, "exchange"); }},
    SweptScreen{"Refund", ledgerPage, [](auto& under) { openEntry(under, "refund"); }},
    SweptScreen{"Opening", ledgerPage, [](auto& under) { openEntry(under, "opening"); }},
    SweptScreen{"Uncertain", ledgerPage, saveInVain},
    SweptScreen{"Question", ledgerPage, askForTheDraft},
    SweptScreen{"Reversal", ledgerPage, openReversal},
    SweptScreen{"ReversalRefused", ledgerPage, beRefusedAReversal},
    SweptScreen{"RecordedElsewhere", ledgerPage, recordElsewhere},
    SweptScreen{"Period", ledgerPage,
                [](auto& under) {
                    signIn(under);
                    under.screen.keys("Alt+Down");
                    under.screen.waitForFocus("periodPopover");
                }},
    SweptScreen{"Filters", ledgerPage,
                [](auto& under) {
                    signIn(under);
                    under.screen.press("filterAll");
                    under.screen.waitForFocus("filterPopover");
                }},
    SweptScreen{"AmountFilter", ledgerPage,
                [](auto& under) {
                    signIn(under);
                    under.screen.press("filterAll");
                    under.screen.waitForFocus("filterPopover");
                    under.screen.keys("End Return");
                    under.screen.type("x");
                }},
    SweptScreen{"OneAccount", ledgerPage,
                [](auto& under) {
                    signIn(under);
                    LedgerFilter filter;
                    filter.accountIDs = {"Operating bank"};
                    under.window.template findChild<LedgerBrowser*>()->setFilter(filter);
                    under.screen.press("totalsMore");
                }},
    SweptScreen{"SeveralReversals", ledgerPage,
                [](auto& under) {
                    signIn(under);
                    under.screen.find("ledgerTable").setFocus();
                    under.screen.keys("Ctrl+A");
                    under.window.template findChild<QAction*>(QStringLiteral("reverseSeveral"))->trigger();
                    under.screen.waitForFocus("batchReversalDialog");
                    under.screen.keys("Ctrl+Return");
                }},
    SweptScreen{"Totals", ledgerPage,
                [](auto& under) {
                    signIn(under);
                    under.screen.press("totalsMore");
                }},
    SweptScreen{"Day", ledgerPage,
                [](auto& under) {
                    openEntry(under, "expense");
                    under.screen.press("entryDay");
                    under.screen.waitForFocus("dayPopover");
                }},
    SweptScreen{"Categories", ledgerPage,
                [](auto& under) {
                    openEntry(under, "expense");
                    under.screen.press("entryAllCategories");
                    under.screen.waitForFocus("entryCategoryPopover");
                }},
    SweptScreen{"DoubtfulEntry", ledgerPage,
                [](auto& under) {
                    openEntry(under, "expense");
                    under.screen.fill("entryAmount", "100/3");
                    under.screen.waitFor("entryCaution");
                }},
    SweptScreen{"CategoryOfAnEntry", ledgerPage,
                [](auto& under) {
                    under.openDemonstration(books().permissions({"viewCompany", "manageCompany"}));
                    under.screen.choose("newEntryKinds", "newEntry.expense");
                    under.screen.waitForFocus("transactionForm");
                    under.screen.press("entryAllCategories");
                    under.screen.waitForFocus("entryCategoryPopover");
                    under.screen.type("Parking");
                    under.screen.press("entryCategoryNew");
                    under.screen.waitForFocus("categoryDialog");
                }},
    SweptScreen{"IncomeHelp", ledgerPage,
                [](auto& under) {
                    openEntry(under, "income");
                    under.screen.press("entryHelp");
                }},
    SweptScreen{"NothingFound", ledgerPage,
                [](auto& under) {
                    signIn(under);
                    under.screen.fill("ledgerSearch", "zzz");
                    under.screen.waitFor("noticeChangeFilter");
                }},
    SweptScreen{"NothingRecorded", ledgerPage,
                [](auto& under) {
                    auto fresh = SnapshotBuilder{}.account("Operating bank", {"IDR"}).grantAll();
                    under.openDemonstration(fresh);
                    under.screen.waitFor("ledgerNotice");
                }},
};

}

TEST_P(Sweep, FindsNothingCutNamelessOrOutOfReach)
{
    const auto& [screen, language] = GetParam();
    WindowUnderTest under{screen.pages(), smallest};
    screen.open(under);
    under.speak(language);
    auto& top = *visibleWindows().back();
    EXPECT_EQ(auditLabels(top), std::vector<std::string>{});
    EXPECT_EQ(auditControls(top), std::vector<std::string>{});
    EXPECT_EQ(auditTabOrder(top), std::vector<std::string>{});
    EXPECT_NE(under.screen.focus(), "nothing");
    EXPECT_EQ(auditReturn(top), std::vector<std::string>{});
}

SWEEP(Screens, shown);
