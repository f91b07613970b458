#pragma once

#include <string>

#include "LedgerCore/Client/Store/EntryTemplates.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportsView.h"
#include "LedgerUI/testing/WindowUnderTest.h"

inline PageRegistry ledgerAndReports()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<ReportsView>(WorkspacePage::reports);
    return pages;
}

/// The rent of "bank", an author's own, due on the last day of each month since October, and a shared transfer without
/// an amount.
inline std::string dueTemplates(const std::string& settled = "")
{
    return R"({"templates":[{"id":"t1","memberID":"m1","name":"Office rent","shared":false,)"
           R"("entry":{"kind":"expense","note":"Office","categoryID":"rent","sourceAccountID":"bank","currency":"USD",)"
           R"("amountMinor":90000},"recurrence":{"unit":"month","every":1,"firstDay":"2026-10-31"},"revision":3,)"
           R"("settled":[)" +
           settled +
           R"(]},{"id":"t2","memberID":"m2","name":"Savings","shared":true,)"
           R"("entry":{"kind":"transfer","note":"","sourceAccountID":"bank","targetAccountID":"vault",)"
           R"("currency":"USD"},"revision":1,"settled":[]}]})";
}

/// Opens the demonstration at a service of our own kind, which keeps these templates.
inline void openBooksWithTemplates(WindowUnderTest& under, const std::string& templates)
{
    SnapshotBuilder builder;
    builder.account("bank", {"USD", "IDR"}).account("vault", {"USD"}).grantAll().balance("bank", "USD", 500'000);
    builder.category("rent", "expense", "Rent").income("sale", "2026-11-02", "bank", "USD", 30'000);
    const auto tagged = [](std::string body) {
        return ServerReply{.body = std::move(body), .headers = {"ETag: \"1\""}};
    };
    under.server.replace("GET v1/templates", ServerReply::json(templates));
    under.server.replace("POST v1/demo", tagged(builder.signInJson()));
    under.server.replace("GET v1/snapshot", tagged(builder.json()));
    require(resultOf(under.store.startDemo("en-US", "owner")).has_value(), "the scripted demonstration opens");
    settle();
    waitUntil([&] { return under.store.templates().areOffered(); });
    settle();
}
