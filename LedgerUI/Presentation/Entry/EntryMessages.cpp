#include "LedgerUI/Presentation/Entry/EntryMessages.h"

#include <algorithm>
#include <array>

namespace {

/// Whether the problem was found by looking at several fields, so that a change of any of them may have settled it.
bool isOfSeveralFields(const EntryProblem& problem)
{
    if (const auto* limit = std::get_if<RangeLimit>(&problem.reason))
        return limit->of == RangeLimit::Of::balance;
    if (const auto* reason = std::get_if<PostingReason>(&problem.reason))
        return *reason == PostingReason::sameCurrency || *reason == PostingReason::beforeOriginal;
    if (const auto* error = std::get_if<EntryValidationError>(&problem.reason))
        return std::holds_alternative<EntryValidationError::ReserveInsufficient>(error->what) ||
               std::holds_alternative<EntryValidationError::ReserveUnknown>(error->what);
    return std::holds_alternative<RefundLimit>(problem.reason);
}

/// Whether the problem was found in the books, which may have changed since.
bool isOfTheBooks(const EntryProblem& problem)
{
    constexpr std::array found{PostingReason::openingExists, PostingReason::historyIncomplete,
                               PostingReason::originalUnavailable, PostingReason::duplicateReference,
                               PostingReason::receiptLinked};
    const auto* reason = std::get_if<PostingReason>(&problem.reason);
    return isOfSeveralFields(problem) || (reason && std::ranges::find(found, *reason) != found.end());
}

}

void EntryMessages::forget(EntryEditing& editing, EntryField field)
{
    std::erase_if(editing.problems, [field](const EntryProblem& each) { return each.field == field; });
    editing.refusedPastes.erase(field);
}

void EntryMessages::forgetWith(EntryEditing& editing, EntryField field)
{
    forget(editing, field);
    std::erase_if(editing.problems, isOfSeveralFields);
}

void EntryMessages::forgetBooks(EntryEditing& editing)
{
    std::erase_if(editing.problems, isOfTheBooks);
}
