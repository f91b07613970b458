#pragma once

#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Entries/Drafts/EntryProblem.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Imports/LedgerImportPlan.h"

/// A row that the service would refuse, and what a person reads about it.
struct ImportRefusal {
    int line = 2; // record of the file, the header being 1
    PostingReason reason = PostingReason::notFound;
    EntryProblem problem;

    bool operator==(const ImportRefusal&) const = default;
};

/// A plan without issues is made of rows that are well written. Whether the books would take them, one after another,
/// is seen by trying: by the rules of `PostingRules`, with the balances that the rows before would leave.
namespace ImportDryRun {

/// Every row that the service must refuse, in file order; empty when nothing speaks against sending the plan. What the
/// member does not see is given the benefit of the doubt. A row whose identifier a visible entry bears is recorded
/// already and not judged again, so that a file that was stopped half-way can be sent again.
/// `today` is "YYYY-MM-DD".
std::vector<ImportRefusal> run(const LedgerImportPlan& plan, const VisibleBooks& books, std::string_view today);

/// A stable word for programs.
std::string_view key(const ImportRefusal& refusal);

}
