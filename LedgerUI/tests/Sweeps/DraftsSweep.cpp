#include <array>

#include "LedgerUI/testing/Sweep.h"
#include "LedgerUI/tests/DraftsUnderTest.h"

namespace {

void begin(WindowUnderTest& under)
{
    under.screen.press("newEntryButton");
    under.screen.waitForFocus("transactionForm");
}

const std::array shown{
    SweptScreen{"EntryFormWithBegunEntry", ledgerAndReports,
                [](auto& under) {
                    openBooksWithDrafts(under, {draftLeft()});
                    begin(under);
                }},
    SweptScreen{"EntryFormNotKept", ledgerAndReports,
                [](auto& under) {
                    openBooksWithDrafts(under, {});
                    begin(under);
                    under.screen.fill("entryAmount", "42");
                    under.screen.waitFor("entryDraftBehind");
                }},
    SweptScreen{"EntrySentByADeadProgram", ledgerAndReports,
                [](auto& under) {
                    openBooksWithDrafts(under, {draftSent()});
                    under.screen.waitFor("transactionForm");
                }},
};

}

SWEEP(Drafts, shown);
