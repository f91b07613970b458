#include "LedgerUI/Presentation/Entry/EntryFormState.h"

#include <tuple>

#include "LedgerCore/Domain/Entries/EntryRules.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

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
    const auto fate = fateOf(failure);
    return fate == CommandFate::unknown || (attempt == Attempt::retry && fate != CommandFate::refused);
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
