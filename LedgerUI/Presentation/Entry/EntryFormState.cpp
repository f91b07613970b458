#include "LedgerUI/Presentation/Entry/EntryFormState.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"

namespace {

auto entered(const TransactionDraft& draft)
{
    const auto destination = draft.hasDestination() ? draft.target : std::optional<std::string>{};
    return std::tuple{
        draft.amount,          draft.targetAmount, draft.note,        draft.categoryID,       draft.originalIncomeID,
        draft.refundReference, draft.date,         draft.attachments, draft.primaryAccount(), destination};
}

}

bool EntryForm::supports(std::string_view kind)
{
    static constexpr std::array kinds{EntryKind::expense,  EntryKind::income, EntryKind::transfer,
                                      EntryKind::exchange, EntryKind::refund, EntryKind::opening};
    return std::ranges::find(kinds, kind) != kinds.end();
}

std::vector<const Account*> EntryForm::accounts(const EntryEditing& editing, const LedgerSnapshot& snapshot)
{
    auto offered = LedgerEntryAccess::accounts(snapshot, editing.draft.kind);
    if (editing.draft.kind == EntryKind::opening)
        std::erase_if(offered, [&](const Account* each) { return currencies(editing, *each).empty(); });
    return offered;
}

std::vector<std::string> EntryForm::currencies(const EntryEditing& editing, const Account& account)
{
    auto offered = account.currencies;
    if (editing.draft.kind == EntryKind::opening)
        std::erase_if(offered, [&](const std::string& code) {
            return std::ranges::find(editing.openings, EntryOpeningPlace{account.id, code}) == editing.openings.end();
        });
    return offered;
}

EntryField EntryForm::nextField(const TransactionDraft& draft)
{
    if (!draft.primaryAccount())
        return EntryField::account;
    // A transfer names both accounts before its one amount.
    if (draft.kind == EntryKind::transfer && !draft.target)
        return EntryField::destination;
    return EntryField::amount;
}

std::expected<TransactionInput, std::vector<EntryProblem>>
EntryForm::command(const EntrySubmission& submission, const VisibleBooks& books, const std::string& today,
                   std::string_view locale, const std::string& freshKey)
{
    auto draft = submission.form().draft;
    if (draft.date.empty())
        draft.date = today;
    auto input = EntryRules::input(draft, books, today, locale);
    // The key of a due day stays with it whatever changes: it is what keeps the day from a second entry.
    const bool isOfDueDay = TemplateOccurrence::ofKey(draft.idempotencyKey).has_value();
    const auto& sent = submission.command();
    if (input && !isOfDueDay && sent && *input != *sent)
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
