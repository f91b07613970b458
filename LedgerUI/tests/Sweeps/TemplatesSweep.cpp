#include <array>

#include "LedgerUI/testing/Sweep.h"
#include "LedgerUI/tests/TemplatesUnderTest.h"

namespace {

void openTemplates(WindowUnderTest& under, const std::string& templates)
{
    openBooksWithTemplates(under, templates);
    under.screen.choose("newEntryKinds", "newEntry.templates");
    under.screen.waitFor("templatesDialog");
}

void openForm(WindowUnderTest& under)
{
    openTemplates(under, dueTemplates());
    under.screen.press("templateChange");
    under.screen.waitForFocus("templateForm");
}

const std::array shown{
    SweptScreen{"LedgerWithDueEntries", ledgerAndReports,
                [](auto& under) {
                    openBooksWithTemplates(under, dueTemplates());
                    under.screen.waitFor("templatesDue");
                }},
    SweptScreen{"Templates", ledgerAndReports, [](auto& under) { openTemplates(under, dueTemplates()); }},
    SweptScreen{"NoTemplates", ledgerAndReports, [](auto& under) { openTemplates(under, R"({"templates":[]})"); }},
    SweptScreen{"TemplateForm", ledgerAndReports, [](auto& under) { openForm(under); }},
    SweptScreen{"TemplateFormInVain", ledgerAndReports,
                [](auto& under) {
                    openForm(under);
                    under.screen.fill("templateName", " ");
                    under.screen.fill("templateAmount", "0");
                    under.screen.fill("templateEvery", "0");
                    under.screen.keys("Ctrl+Return");
                }},
    SweptScreen{"EntryFormWithTemplate", ledgerAndReports,
                [](auto& under) {
                    openBooksWithTemplates(under, dueTemplates());
                    under.screen.waitFor("templatesDue");
                    under.screen.press("newEntryButton");
                    under.screen.waitForFocus("transactionForm");
                }},
};

}

SWEEP(Templates, shown);
