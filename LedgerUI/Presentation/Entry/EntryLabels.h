#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Money/AmountExpression.h"
#include "LedgerUI/Presentation/Forms/AmountTyping.h"

/// What the form calls its parts for a kind of entry.
namespace EntryLabels {

/// The account that an entry has at least.
QString account(std::string_view kind, std::string_view locale);
/// In its place where no account can be chosen.
QString noAccount(std::string_view kind, std::string_view locale);
/// The button that saves. `purpose` is that of a transfer.
QString confirmation(std::string_view kind, std::string_view purpose, std::string_view locale);
/// Where money goes in such an entry; empty where that goes without saying.
QString direction(std::string_view kind, std::string_view locale);
/// Why arithmetic in an amount gives no amount in the currency.
QString refusedExpression(AmountExpression::Error error, std::string_view currency, std::string_view locale);
/// Why nothing was pasted.
QString refusedPaste(PasteRefusal refusal, std::string_view locale);

}
