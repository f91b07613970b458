#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Entries/Drafts/EntryProblem.h"
#include "LedgerCore/Domain/Entries/Drafts/TransactionDraft.h"
#include "LedgerCore/Domain/Entries/Posting/PostingRules.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

/// An account that money may be moved into. Its member need not see it.
struct EntryDestination {
    std::string id;
    std::string name;
    std::vector<std::string> currencies;
    const Account* seen = nullptr;              // in the snapshot; null when the member does not see it
    std::optional<std::string> transferPurpose; // a `TransferPurpose`, for transfers that carry one
};

/// An income that a refund may name, with what it still allows.
struct RefundableIncome {
    const LedgerTransaction* entry = nullptr; // in the snapshot
    std::int64_t remainingMinor = 0;          // minor units; above zero
};

/// How the entry form offers accounts and turns a draft into the command that records it. Pure. Whether the command
/// can be recorded is decided by `PostingRules`.
namespace EntryRules {

/// `current` while it is on offer, else nothing: another destination is never picked.
std::optional<std::string> retainedTarget(const std::optional<std::string>& current,
                                          std::span<const EntryDestination> options);

/// The account preselected when the form opens. An explicit one is taken when it is on offer; if it is not, nothing
/// is. Without one the preferred account is taken while it is on offer and holds the preferred currency (when one is
/// named); failing that the only account on offer that holds that currency, and never one of several.
std::optional<std::string> initialAccountID(const std::optional<std::string>& explicitID,
                                            const std::optional<std::string>& preferredID,
                                            const std::optional<std::string>& preferredCurrency,
                                            std::span<const Account* const> options);

/// The kinds of the form's switch that have at least one account: expense, income, transfer, exchange, in this order.
std::vector<std::string_view> availableKinds(const LedgerSnapshot& snapshot);

/// Where the draft's money may go: for a transfer what takes its currency from its source, for an exchange every
/// account of the member's that holds another currency. Empty without a source.
std::vector<EntryDestination> destinations(const LedgerSnapshot& snapshot, const TransactionDraft& draft);

/// Incomes that a refund in this currency may name, in snapshot order, without those that are paid back in full.
std::vector<RefundableIncome> refundableIncomes(const VisibleBooks& books, std::string_view currency);
std::vector<RefundableIncome> refundableIncomes(const LedgerSnapshot& snapshot, std::string_view currency);

/// The petty cash that an employee's account can still pay out: its balance, with nothing held back. Unknown when the
/// account names no balance although visible entries move the currency on it.
std::optional<std::int64_t> reserve(const VisibleBooks& books, const Account& account, std::string_view currency);

/// The command that the draft stands for, as far as it can be read: amounts that cannot are left at zero.
TransactionInput command(const TransactionDraft& draft, const VisibleBooks& books, std::string_view locale);

/// The command that records the draft, or everything that keeps it from being recorded, one problem a field at most, in
/// the order of the fields: amounts that cannot be read, and what `PostingRules` refuses. A check whose ground is
/// missing (an amount without a currency) is left out until the ground is there. Cheap enough for every key.
std::expected<TransactionInput, std::vector<EntryProblem>>
input(const TransactionDraft& draft, const VisibleBooks& books, std::string_view today, std::string_view locale);

/// The same for a single question, with the draft's own day as today.
std::expected<TransactionInput, std::vector<EntryProblem>>
input(const TransactionDraft& draft, const LedgerSnapshot& snapshot, std::string_view locale);

/// What the person reads about a refusal of the command.
EntryProblem problem(const PostingRefusal& refusal, const TransactionInput& input, const PostingContext& context);

}
