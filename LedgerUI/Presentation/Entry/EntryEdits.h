#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Ledger/LedgerRefund.h"

/// What each choice in the entry form does to the draft. Each gives the draft that follows; a message goes away with
/// the change that answers it.
namespace EntryEdits {

/// The draft that the form opens with: its account by `EntryRules::initialAccountID`, preferring the account and
/// currency on which the member last recorded this kind. Its day is today's, or that of the entry that it corrects.
/// A prefilled draft that has a key keeps it: that of a template's due day, or of an entry begun before.
EntryEditing opened(const EntryForm::Opening& opening, const LedgerSnapshot& snapshot, std::string idempotencyKey);

/// Another kind: account and currency stay where the kind allows them, typed amounts and note always; what the kind
/// has no place for is dropped.
EntryEditing withKind(EntryEditing editing, std::string_view kind, const LedgerSnapshot& snapshot);

/// Another account: its currency stays when the new account holds it, else becomes its first one.
EntryEditing withAccount(EntryEditing editing, const std::string& accountID, const LedgerSnapshot& snapshot);

/// Another currency clears the amount; a destination that does not take it is cleared, never replaced.
EntryEditing withCurrency(EntryEditing editing, const std::string& currency, const LedgerSnapshot& snapshot);

EntryEditing withDestination(EntryEditing editing, const std::string& accountID, const LedgerSnapshot& snapshot);
EntryEditing withTargetCurrency(EntryEditing editing, const std::string& currency);
EntryEditing withAmount(EntryEditing editing, std::string text);
EntryEditing withTargetAmount(EntryEditing editing, std::string text);
/// The field of `amount` was left: a text that is no amount above zero says so.
EntryEditing leftAmount(EntryEditing editing, EntryField amount, std::string_view locale);
/// Something was pasted into the field of `amount` that is not one amount; the field stays as it was.
EntryEditing refusedPaste(EntryEditing editing, EntryField amount, PasteRefusal refusal);
/// "YYYY-MM-DD"; an empty one is today's, whenever the entry is saved.
EntryEditing withDay(EntryEditing editing, std::string day);
EntryEditing withCategory(EntryEditing editing, const std::string& categoryID);
EntryEditing withNote(EntryEditing editing, std::string note);
EntryEditing withOriginal(EntryEditing editing, const std::optional<std::string>& incomeID);
EntryEditing withReference(EntryEditing editing, std::string reference);
EntryEditing withReceipts(EntryEditing editing, std::vector<std::string> attachmentIDs);

/// After a refresh: what is no longer on offer is cleared and says so.
EntryEditing refreshed(EntryEditing editing, const LedgerSnapshot& snapshot);

/// The form on an entry that an earlier one left behind: locked where nobody knows whether it was recorded, else to be
/// changed or sent, with its key in both.
EntrySubmission restored(const KeptEntry& kept, const LedgerSnapshot& snapshot, std::string_view locale);

/// The next entry after one that was recorded: its kind, accounts, currencies, category and chosen day, everything else
/// empty. After an opening balance the next place that can still take one, or none.
EntryEditing following(const EntryEditing& recorded, const LedgerSnapshot& snapshot, std::string idempotencyKey);

/// A refund of all that an income still allows.
TransactionDraft refunding(const LedgerRefund& refund, std::string_view locale);

/// The draft of the entry that `original` should have been; nothing of it is posted.
TransactionDraft correctionOf(const LedgerTransaction& original, std::string_view locale);

}
