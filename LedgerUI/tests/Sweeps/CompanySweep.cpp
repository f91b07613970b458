#include <array>

#include "LedgerUI/Screens/Company/CompanyView.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/testing/CompanyBooks.h"
#include "LedgerUI/testing/Sweep.h"

namespace {

PageRegistry builtPages()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<CompanyView>(WorkspacePage::company);
    return pages;
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

void openAudit(WindowUnderTest& under)
{
    const auto trail =
        ServerReply::json(R"({"records":[{"number":42,"at":"2026-11-20T02:14:00.000Z","memberID":"m2",)"
                          R"("origin":"2001:db8::7","kind":"PATCH /v1/members/{id}","record":"m4",)"
                          R"("before":{"role":"employee","active":true},"after":{"role":"finance","active":false}},)"
                          R"({"number":41,"at":"2026-11-19T23:50:00.000Z","origin":"operator",)"
                          R"("kind":"company-approved","record":"c1"}],"next":41})");
    under.server.replace("GET v1/audit", trail);
    under.server.replace("GET v1/audit?record=m4", trail);
    openCompany(under, "auditTab");
    under.screen.waitFor("auditMore");
    under.screen.press("auditOnly");
    under.screen.waitUntilGone("auditOnly");
    under.screen.waitFor("auditMore");
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

void openCategories(WindowUnderTest& under)
{
    openCompany(under, "categoriesTab");
    under.screen.press("categoryInactive");
    under.screen.pressRow("categoryTable", "Electricity");
}

void openBookkeeping(WindowUnderTest& under)
{
    openCompany(under, "bookkeepingTab");
    under.screen.press("dividendsSwitch");
}

void openSetup(WindowUnderTest& under)
{
    openBookkeeping(under);
    under.screen.press("setUpBooks");
    under.screen.waitForFocus("bookkeepingSetup");
    under.screen.fill("setupDay", "x");
    under.screen.keys("Ctrl+Return"); // with every message
}

void meetARevisionConflict(WindowUnderTest& under)
{
    openBookkeeping(under);
    under.server.replace("POST v1/financial-settings/commands",
                         ServerReply::error(409, "financial_settings_revision_conflict"));
    under.screen.press("settingsSave");
    under.screen.waitFor("settingsReload");
}

const std::array shown{
    SweptScreen{"Members", builtPages,
                [](auto& under) {
                    openCompany(under, "membersTab");
                    under.screen.pressRow("memberTable", "Hương");
                    under.screen.press("permission.viewDividends");
                }},
    SweptScreen{"Invitations", builtPages, [](auto& under) { openCompany(under, "invitationsTab"); }},
    SweptScreen{"Invite", builtPages, openInvite},
    SweptScreen{"InvitationCode", builtPages, invite},
    SweptScreen{"Audit", builtPages, openAudit},
    SweptScreen{"CompanyProfile", builtPages, [](auto& under) { openCompany(under, "profileTab"); }},
    SweptScreen{"Categories", builtPages, openCategories},
    SweptScreen{"NewCategory", builtPages,
                [](auto& under) {
                    openCategories(under);
                    under.screen.press("companyPrimary");
                    under.screen.keys("Return"); // with its message
                    under.screen.type(" x");
                }},
    SweptScreen{"Presets", builtPages,
                [](auto& under) {
                    openCategories(under);
                    under.screen.press("categoryCatalogButton");
                    under.screen.waitForFocus("presetDialog");
                }},
    SweptScreen{"Bookkeeping", builtPages, openBookkeeping},
    SweptScreen{"BookkeepingConflict", builtPages, meetARevisionConflict},
    SweptScreen{"BookkeepingSetup", builtPages, openSetup},
    SweptScreen{"Colors", builtPages,
                [](auto& under) {
                    openBookkeeping(under);
                    under.screen.press("changeColors");
                    under.screen.waitForFocus("colorsDialog");
                }},
    SweptScreen{"OwnAccess", builtPages, openCompanyAsEmployee},
};

}

SWEEP(Company, shown);
