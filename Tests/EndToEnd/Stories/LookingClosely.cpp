#include <functional>
#include <utility>

#include "Tests/EndToEnd/Stage/Desk.h"
#include "Tests/EndToEnd/Story.h"

// What the pages open: forms, lists, previews and settings, each looked at and closed again. An entry with a receipt
// and a template are made for it.

namespace {

struct Visitor {
    Stage& stage;
    ScreenDriver& screen;

    void look(const char* what, const std::function<void()>& open) const
    {
        stage.teller.step(QString::fromUtf8(what), open);
    }
    void close(const char* dialog) const
    {
        screen.keys("Esc");
        if (screen.shows("questionConfirm"))
            screen.press("questionConfirm");
        screen.waitUntilGone(dialog);
    }
};

void visitAccounts(const Visitor& visitor)
{
    auto& screen = visitor.screen;
    visitor.look("An account", [&] {
        screen.press("page-accounts");
        screen.pressRow("accountTable", "Petty cash");
        screen.waitFor("accountTrend");
    });
    visitor.look("A new account", [&] {
        screen.press("newAccountButton");
        screen.waitForFocus("accountForm");
        screen.press("accountPurpose-employee");
    });
    visitor.close("accountForm");
}

void visitPeople(const Visitor& visitor)
{
    auto& screen = visitor.screen;
    screen.press("page-company");
    screen.turnTo("memberTable");
    visitor.look("A member and the matrix of rights", [&] {
        screen.pressRow("memberTable", "Rizky");
        screen.waitFor("grantMatrix");
    });
    visitor.look("A cell of the matrix, which says why it cannot be changed", [&] {
        screen.find("grantMatrix").setFocus();
        screen.keys("Right Down");
    });
    visitor.look("An invitation", [&] {
        screen.turnTo("invitationsTab");
        screen.press("companyPrimary");
        screen.waitForFocus("inviteName");
    });
    visitor.close("inviteDialog");
}

void visitTheCompany(const Visitor& visitor)
{
    auto& screen = visitor.screen;
    visitor.look("A category", [&] {
        screen.turnTo("categoryEditor");
        screen.waitFor("categoryTable");
    });
    visitor.look("The catalogue of categories", [&] {
        screen.press("categoryCatalogButton");
        screen.waitForFocus("presetDialog");
    });
    visitor.close("presetDialog");
    visitor.look("The financial settings", [&] { screen.turnTo("bookkeepingTab"); });
    visitor.look("The colours of entries", [&] {
        screen.press("changeColors");
        screen.waitFor("colorsDialog");
    });
    visitor.close("colorsDialog");
    visitor.look("The audit trail", [&] {
        screen.turnTo("auditTab");
        screen.waitFor("auditTable");
    });
}

void visitAReceipt(const Visitor& visitor)
{
    auto& screen = visitor.screen;
    visitor.look("An entry with a receipt", [&] {
        screen.press("page-ledger");
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        screen.fill("entryAmount", "21000");
        screen.press("entryCategory0");
        pastePhoto(screen);
        screen.waitForText(" KB");
    });
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("transactionForm");
    screen.waitFor("detailReceipt");
    visitor.look("The receipt", [&] {
        screen.find("detailReceipt").setFocus();
        screen.keys("Space");
        screen.waitFor("receiptPreview");
        screen.waitUntil("the picture is shown", [&] { return screen.offers("previewSave"); });
    });
    visitor.close("receiptPreview");
    visitor.look("The entry as a receipt to share", [&] {
        screen.press("shareButton");
        screen.waitForFocus("shareAccount");
    });
    visitor.close("receiptShare");
}

void visitTheLedger(const Visitor& visitor)
{
    auto& screen = visitor.screen;
    visitor.look("A template is made", [&] {
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        screen.fill("entryAmount", "61000");
        screen.press("entryCategory0");
        screen.press("entryKeepTemplate");
        screen.waitForFocus("templateForm");
        screen.fill("templateName", "Stall");
    });
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("templateForm");
    screen.press("entryCancel");
    screen.press("questionConfirm");
    screen.waitUntilGone("transactionForm");
    visitor.look("The templates", [&] {
        screen.choose("newEntryKinds", "newEntry.templates");
        screen.waitFor("templatesDialog");
        screen.waitForText("Stall");
    });
    visitor.close("templatesDialog");
    visitor.look("An import", [&] {
        screen.press("importLedgerButton");
        screen.waitForFocus("importDialog");
    });
    visitor.close("importDialog");
}

void visitTheSettings(const Visitor& visitor)
{
    auto& screen = visitor.screen;
    screen.keys("Ctrl+,");
    constexpr std::pair<const char*, const char*> sections[] = {{"The language", "settings-language"},
                                                                {"One's own profile", "settings-profile"},
                                                                {"The receipts on this computer", "settings-receipts"},
                                                                {"The session", "settings-session"}};
    for (const auto& [what, section] : sections)
        visitor.look(what, [&] { screen.press(section); });
    visitor.close("settingsDialog");
}

}

void tellOfLookingClosely(Stage& stage)
{
    const Visitor visitor{stage, stage.screen};
    stage.enterDemonstration("owner");
    visitAccounts(visitor);
    visitPeople(visitor);
    visitTheCompany(visitor);
    visitAReceipt(visitor);
    visitTheLedger(visitor);
    visitor.look("A report", [&] { stage.screen.press("page-reports"); });
    visitor.look("A report is exported", [&] {
        stage.screen.keys("Ctrl+E");
        stage.screen.waitFor("reportExportDialog");
    });
    visitor.close("reportExportDialog");
    visitTheSettings(visitor);
}
