#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "LedgerCore/Client/Failure.h"
#include "LedgerCore/Domain/Entries/EntryProblem.h"
#include "LedgerCore/Domain/Entries/TransactionDraft.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/TransactionInput.h"

/// A draft that is being typed.
struct EntryEditing {
    TransactionDraft draft;
    bool sourceCurrencyReset = false; // a change of currency cleared the amount
    bool targetCurrencyReset = false;
    bool targetNeedsSelection = false; // the destination is no longer on offer
    std::vector<EntryProblem> problems{};
    std::optional<Failure> refusal{};          // the service's, about the last submission
    std::optional<TransactionInput> refused{}; // what it was about
};

/// Sent; the reply is awaited. `isRetry` when an earlier sending may have been recorded already.
struct EntrySaving {
    TransactionDraft draft;
    TransactionInput input;
    bool isRetry = false;
};

/// Nobody knows whether the service recorded it: locked, and only the same command may be sent again.
struct EntryUncertain {
    TransactionDraft draft;
    TransactionInput input;
};

using EntryFormState = std::variant<EntryEditing, EntrySaving, EntryUncertain>;

namespace EntryForm {

/// What the form is opened with.
struct Opening {
    std::string kind;
    std::optional<std::string> accountID;      // asked for explicitly
    std::optional<TransactionDraft> prefilled; // the correct entry after a reversal
};

const TransactionDraft& draftOf(const EntryFormState& state);

enum class Attempt { first, retry };

/// Whether after this failure nobody knows if the command was carried out. A refused retry settles it only when the
/// refusal judges the command itself; one about the session, the rate or the way there says nothing about the first
/// sending.
bool leavesUncertain(const Failure& failure, Attempt attempt);

/// Once the service has answered: the state that follows, or nothing when the entry is recorded.
std::optional<EntryFormState> afterReply(const EntrySaving& saving, const Result<void>& reply);

/// The command for the draft, or the problems. A draft that was refused as it stands keeps its key; one that was
/// changed since is a submission of its own and takes `freshKey`.
std::expected<TransactionInput, std::vector<EntryProblem>> submission(const EntryEditing& editing,
                                                                      const LedgerSnapshot& snapshot,
                                                                      std::string_view locale,
                                                                      const std::string& freshKey);

/// A typed amount in the separators of another language. What could not be read before cannot be read after.
std::string rewritten(std::string amount, std::string_view fromLocale, std::string_view toLocale);

/// Whether closing would lose something that a person entered since `initial`.
bool hasDraft(const TransactionDraft& draft, const TransactionDraft& initial);

}
