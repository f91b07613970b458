#pragma once

#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

/// The reference of a payer or bank under which a refund is known.
namespace EntryReference {

/// What the command says, without surrounding blanks; empty when it says nothing.
std::string_view of(const TransactionInput& input);

/// The form in which references are compared: banks print the same one in capitals and in small letters. Only the
/// letters A to Z have such a pair here, so that every database folds alike.
std::string folded(std::string_view reference);

}
