#pragma once

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerListing.h"
#include "LedgerUI/Presentation/Print/PrintHead.h"

class LedgerStore;

/// The ledger as it goes to paper.
namespace LedgerPrint {

/// The period and whatever else narrows the ledger, part by part.
std::vector<PrintedFact> facts(const LedgerBook& book, const LedgerFilter& filter);

/// What is asked for on paper, and when: the question that the page answers, of the newest books.
struct Asked {
    SnapshotPointer snapshot;
    LedgerListingPointer shown; // the page's answer, of these books or of earlier ones
    PrintMoment moment;
    SharedList<std::string> selectedIDs = {}; // where only these of its entries are asked for
};

/// The entries that are shown, in their order, with the totals below them. Narrowed to one account, and beside it at
/// most by currencies and the period, it is that account's statement.
PrintedDocument list(const LedgerListing& listing, const PrintMoment& moment);
PrintedDocument list(const Asked& asked, const std::string& locale);

/// Whether the books, loaded anew, still give the same list to the person who asked for it. A list is like an export:
/// it leaves the program only as it was looked at.
QCoro::Task<Result<void>> permission(LedgerStore* store, Asked asked);

/// The statement of an account for a period, asked for where no ledger is in sight.
struct AskedStatement {
    SnapshotPointer snapshot;
    std::string accountID;
    Period period;
    PrintMoment moment;
};
PrintedDocument statement(const AskedStatement& asked, const std::string& locale);
/// Whether the books, loaded anew, still give the same statement.
QCoro::Task<Result<void>> permission(LedgerStore* store, AskedStatement asked, std::string locale);

/// One entry with everything that is known of it.
PrintedDocument entry(const LedgerBook& book, std::uint32_t at, const PrintMoment& moment);

}
