#include <array>

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
    auto builder = SnapshotBuilder{}.currentMember(SnapshotBuilder::person("m1", "Dewi Anggraini", "finance"));
    builder.account("Operating bank", {"IDR", "USD"}).account("Singapore", {"USD", "SGD"});
    builder.employeeAccount("Petty cash", {"IDR"}, "m1").grantAll();
    builder.category("power", "expense", "Electricity").category("sales", "income", "Sales");
    builder.balance("Operating bank", "IDR", 28'412'045'000);
    builder.expense("e1", "2026-11-19", "Operating bank", "IDR", 438'520'000, "power").note("November");
    return builder.income("i1", "2026-11-18", "Singapore", "USD", 1'200'000, "sales");
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

const std::array shown{
    SweptScreen{"Accounts", builtPages, openAccounts},
    SweptScreen{"AccountDetail", builtPages, chooseAccount},
    SweptScreen{"AccountsNoMatch", builtPages,
                [](auto& under) {
                    openAccounts(under);
                    under.screen.fill("accountSearch", "zzz");
                    under.screen.waitFor("accountRemedy");
                }},
};

}

SWEEP(Accounts, shown);
