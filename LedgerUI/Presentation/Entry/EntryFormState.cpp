#include "LedgerUI/Presentation/Entry/EntryFormState.h"

#include <algorithm>
#include <tuple>
#include <unordered_set>

#include "LedgerCore/Domain/Entries/EntryRules.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

/// Whether a refused retry tells that the first sending was not recorded either.
bool judgesTheCommand(const Failure& failure)
{
    const auto* const error = std::get_if<APIError>(&failure);
    return error && (error->status == 400 || error->status == 409 || error->status == 413 || error->status == 422);
}

auto entered(const TransactionDraft& draft)
{
    const auto destination = draft.hasDestination() ? draft.target : std::optional<std::string>{};
    return std::tuple{draft.amount,      draft.targetAmount,     draft.note,
                      draft.categoryID,  draft.originalIncomeID, draft.refundReference,
                      draft.attachments, draft.primaryAccount(), destination};
}

}

const TransactionDraft& EntryForm::draftOf(const EntryFormState& state)
{
    return std::visit([](const auto& each) -> const TransactionDraft& { return each.draft; }, state);
}

bool EntryForm::leavesUncertain(const Failure& failure, Attempt attempt)
{
    if (std::holds_alternative<Cancelled>(failure) || isOutcomeUnknown(failure))
        return true;
    return attempt == Attempt::retry && !judgesTheCommand(failure);
}

std::optional<EntryFormState> EntryForm::afterReply(const EntrySaving& saving, const Result<void>& reply)
{
    if (reply)
        return std::nullopt;
    const auto& failure = reply.error();
    if (leavesUncertain(failure, saving.isRetry ? Attempt::retry : Attempt::first))
        return EntryUncertain{saving.draft, saving.input};
    EntryEditing editing;
    editing.draft = saving.draft;
    editing.refusal = failure;
    editing.refused = saving.input;
    return editing;
}

std::expected<TransactionInput, std::vector<EntryProblem>> EntryForm::submission(const EntryEditing& editing,
                                                                                 const LedgerSnapshot& snapshot,
                                                                                 std::string_view locale,
                                                                                 const std::string& freshKey)
{
    auto input = EntryRules::input(editing.draft, snapshot, locale);
    if (input && editing.refused && *input != *editing.refused)
        input->idempotencyKey = freshKey;
    return input;
}

std::string EntryForm::recordedID(const LedgerSnapshot& before, const LedgerSnapshot& after,
                                  const TransactionInput& input)
{
    std::unordered_set<std::string_view> known;
    for (const auto& entry : before.transactions)
        known.insert(entry.id);
    const auto& account = input.sourceAccountID ? input.sourceAccountID : input.targetAccountID;
    const auto isIt = [&](const LedgerTransaction& entry) {
        return !known.contains(entry.id) && entry.kind == input.kind && entry.date == input.date &&
               entry.memberID == after.currentMember.id && std::ranges::any_of(entry.legs, [&](const LedgerLeg& leg) {
                   return leg.accountID == account && leg.currency == input.currency &&
                          (leg.amountMinor == input.amountMinor || leg.amountMinor == -input.amountMinor);
               });
    };
    const auto found = std::ranges::find_if(after.transactions, isIt);
    return found == after.transactions.end() ? std::string{} : found->id;
}

std::string EntryForm::rewritten(std::string amount, std::string_view fromLocale, std::string_view toLocale)
{
    const auto from = Money::separators(fromLocale);
    const auto to = Money::separators(toLocale);
    for (auto& each : amount) {
        if (each == from.decimal)
            each = to.decimal;
        else if (each == from.grouping)
            each = to.grouping;
    }
    return amount;
}

bool EntryForm::hasDraft(const TransactionDraft& draft, const TransactionDraft& initial)
{
    return entered(draft) != entered(initial);
}
