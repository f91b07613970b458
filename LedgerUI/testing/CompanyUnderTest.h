#pragma once

#include "LedgerUI/Screens/Company/CompanyView.h"
#include "LedgerUI/testing/CompanyBooks.h"
#include "LedgerUI/testing/WindowUnderTest.h"

/// The company page as the owner has it open, over a scripted service.
struct CompanyUnderTest : WindowUnderTest {
    explicit CompanyUnderTest(const SnapshotBuilder& books = companyBooks()) : WindowUnderTest{onlyCompany()}
    {
        server.replace("GET v1/invites", ServerReply::json(companyInvitations()));
        openDemonstration(books);
        screen.waitFor("memberTable");
        screen.waitUntil("the invitations are loaded", [this] { return !server.requests("GET v1/invites").empty(); });
        waitUntil([this] { return !store.isBusy(); });
    }

    void openTab(const char* tab)
    {
        screen.press("memberTable");
        screen.turnTo(tab);
    }
    void leaveAlert()
    {
        screen.waitFor("alertDialog");
        screen.keys("Return");
        screen.waitUntilGone("alertDialog");
        activate();
    }
    /// The service has these books from now on.
    void hold(const LedgerSnapshot& books)
    {
        server.replace("GET v1/snapshot", ServerReply::json(Json::encode(books)));
    }

private:
    static PageRegistry onlyCompany()
    {
        PageRegistry pages;
        pages.add<CompanyView>(WorkspacePage::company);
        return pages;
    }
};
