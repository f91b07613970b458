#pragma once

#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Entries/Posting/PostingRefusal.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

/// What a command must look like by itself, before any record is looked at.
namespace PostingShape {

/// Adds everything that is wrong with the command by itself.
void judge(const TransactionInput& input, std::vector<PostingRefusal>& refusals);

/// The field of the form that `targetAccountID` comes from: what only arrives is recorded on its target.
EntryField targetField(std::string_view kind);

}
