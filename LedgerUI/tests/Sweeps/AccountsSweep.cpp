#include <array>
#include <tuple>

#include "LedgerUI/Screens/Accounts/AccountsView.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/testing/Sweep.h"

namespace {

PageRegistry builtPages()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<AccountsView>(WorkspacePage::accounts);
    return pages;
}

SnapshotBuilder books()
{
    auto person = SnapshotBuilder::person("m1", "Dewi Anggraini", "finance");
    person.permissions = {"viewCompany", "manageCompany"};
    auto builder = SnapshotBuilder{}.currentMember(person);
    builder.member(SnapshotBuilder::person("m2", "Nguyễn Thanh Hương"));
    builder.account("Operating bank", {"IDR", "USD"}).account("Singapore", {"USD", "SGD"});
    builder.employeeAccount("Petty cash", {"IDR"}, "m1").grantAll();
    builder.category("power", "expense", "Electricity").category("sales", "income", "Sales");
    builder.balance("Operating bank", "IDR", 28'412'045'000);
    builder.expense("e1", "2026-11-19", "Operating bank", "IDR", 438'520'000, "power")
        .note("Electricity of the office and the warehouse, November");
    builder.transfer("t1", "2026-11-17", "Operating bank", "Petty cash", "IDR", 50'000'000, "funding");
    return builder.income("i1", "2026-11-18", "Singapore", "USD", 1'200'000, "sales")
        .note("Commission on the second consignment of the season");
}

void openAccounts(WindowUnderTest& under)
{
    under.openDemonstration(books());
    under.screen.press("page-accounts");
    under.screen.waitFor("accountTable");
}

void chooseAccount(WindowUnderTest& under)
{
    openAccounts(under);
    under.screen.find("accountTable").setFocus();
    under.screen.keys("Home Down Return");
    under.screen.waitForFocus("accountDetail");
}

/// The form of a float with every message, and with what changing its operator asks for.
void openAccountForm(WindowUnderTest& under, const char* purpose)
{
    openAccounts(under);
    under.screen.press("newAccountButton");
    under.screen.waitForFocus("accountForm");
    under.screen.press(std::string{"accountPurpose-"} + purpose);
    under.screen.keys("Ctrl+Return");
}

void changeAccount(WindowUnderTest& under)
{
    openAccounts(under);
    under.screen.pressRow("accountTable", "Petty cash");
    under.screen.keys("Return");
    under.screen.press("accountEdit");
    under.screen.waitForFocus("accountForm");
    under.screen.pick("accountResponsible", "Nguyễn Thanh Hương");
    under.screen.keys("Ctrl+Return");
    under.screen.waitFor("accountHistory");
}

void changeAccountState(WindowUnderTest& under)
{
    openAccounts(under);
    under.screen.find("accountTable").setFocus();
    under.screen.keys("Home Return");
    under.screen.choose("accountMore", "changeState");
    under.screen.waitForFocus("accountStateDialog");
}

/// The sign-in screen says that what was begun waits.
void endTheSession(WindowUnderTest& under)
{
    openAccounts(under);
    under.screen.press("newAccountButton");
    under.screen.waitForFocus("accountForm");
    under.screen.fill("accountFormName", "Second float");
    under.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    std::ignore = resultOf(under.store.refresh(false));
    under.screen.waitFor("alertDialog");
    under.screen.press("messageClose");
    under.screen.waitUntilGone("alertDialog");
    under.screen.find("email").setFocus();
}

const std::array shown{
    SweptScreen{"Accounts", builtPages, openAccounts},
    SweptScreen{"AccountDetail", builtPages, chooseAccount},
    SweptScreen{"NewCompanyAccount", builtPages, [](auto& under) { openAccountForm(under, "company"); }},
    SweptScreen{"NewFloat", builtPages, [](auto& under) { openAccountForm(under, "employee"); }},
    SweptScreen{"NewRefundAccount", builtPages, [](auto& under) { openAccountForm(under, "refund"); }},
    SweptScreen{"ChangedAccount", builtPages, changeAccount},
    SweptScreen{"ArchivedAccount", builtPages, changeAccountState},
    SweptScreen{"AccountSetup", builtPages,
                [](auto& under) {
                    under.openDemonstration(SnapshotBuilder{});
                    under.screen.press("page-accounts");
                    under.screen.waitFor("setupStep1");
                }},
    SweptScreen{"AccountsNoMatch", builtPages,
                [](auto& under) {
                    openAccounts(under);
                    under.screen.fill("accountSearch", "zzz");
                    under.screen.waitFor("accountRemedy");
                }},
    SweptScreen{"AccountFormThatWaits", builtPages, endTheSession},
};

}

SWEEP(Accounts, shown);
