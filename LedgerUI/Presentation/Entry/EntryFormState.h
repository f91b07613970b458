#pragma once

#include <expected>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Entries/Drafts/EntryProblem.h"
#include "LedgerCore/Domain/Entries/Drafts/TransactionDraft.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerUI/Presentation/Forms/AmountTyping.h"
#include "LedgerUI/Presentation/Forms/Submission.h"

/// Where an opening balance may still be recorded.
struct EntryOpeningPlace {
    std::string accountID;
    std::string currency;

    bool operator==(const EntryOpeningPlace&) const = default;
};

/// What a person has filled in, and what the form says about it. The draft's day is empty while it is today's.
struct EntryEditing {
    TransactionDraft draft;
    bool sourceCurrencyReset = false; // a change of currency cleared the amount
    bool targetCurrencyReset = false;
    bool targetNeedsSelection = false; // the destination is no longer on offer
    std::vector<EntryProblem> problems{};
    std::map<EntryField, PasteRefusal> refusedPastes{}; // amounts into which something was pasted that is not one
    std::vector<EntryOpeningPlace> openings{};          // for an opening balance only
    std::optional<std::string> earliestDay{};           // of the visible entries, for an opening balance only
};

/// What a person did to the form: what follows of what stands in it.
using EntryChange = std::function<EntryEditing(const EntryEditing& now, const LedgerSnapshot& snapshot)>;

using EntrySubmission = Submission<EntryEditing, TransactionInput>;

namespace EntryForm {

/// What the form is opened with.
struct Opening {
    std::string kind;
    std::optional<std::string> accountID;      // asked for explicitly
    std::optional<TransactionDraft> prefilled; // the correct entry after a reversal
};

/// Whether entries of this kind can be recorded in the form; reversals, capital and dividends have their own places.
bool supports(std::string_view kind);

/// The accounts that the form offers for the draft's kind, in snapshot order; for an opening balance only those that
/// can still take one.
std::vector<const Account*> accounts(const EntryEditing& editing, const LedgerSnapshot& snapshot);
/// The currencies of an account on offer, in its order.
std::vector<std::string> currencies(const EntryEditing& editing, const Account& account);

/// The part of the form that a person has to fill in next.
EntryField nextField(const TransactionDraft& draft);

/// The command for what stands in the form, or the problems. A draft that was refused as it stands keeps its key; one
/// that was changed since is a submission of its own and takes `freshKey`.
std::expected<TransactionInput, std::vector<EntryProblem>> command(const EntrySubmission& submission,
                                                                   const VisibleBooks& books, const std::string& today,
                                                                   std::string_view locale,
                                                                   const std::string& freshKey);

/// A typed amount in the separators of another language. What could not be read before cannot be read after.
std::string rewritten(std::string amount, std::string_view fromLocale, std::string_view toLocale);

/// Whether closing would lose something that a person entered since `initial`.
bool hasDraft(const TransactionDraft& draft, const TransactionDraft& initial);

}
