#include "LedgerUI/Presentation/Dividends/DividendActions.h"

#include <algorithm>

#include "LedgerCore/Domain/Dividends/DividendAccess.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerUI/Presentation/Dividends/DividendForm.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

/// The command as far as it is known before an amount is typed.
DividendCommand begun(std::string_view action, const DividendActions::Target& target, const DividendState& state,
                      std::string_view today)
{
    const auto unlessEmpty = [](const std::string& id) { return id.empty() ? std::nullopt : std::optional{id}; };
    DividendCommand command;
    command.action = action;
    command.expectedRevision = state.revision;
    command.date = today;
    command.idempotencyKey = "unsent";
    command.batchID = unlessEmpty(target.batchID);
    command.participantID = unlessEmpty(target.participantID);
    command.advanceID = unlessEmpty(target.advanceID);
    command.movementID = unlessEmpty(target.movementID);
    return command;
}

/// An advance of the participant in the currency of the batch of which something is left.
bool hasOpenAdvance(const DividendState& state, const DividendActions::Target& target)
{
    const auto batch = std::ranges::find(state.batches, target.batchID, &DividendBatch::id);
    if (batch == state.batches.end())
        return false;
    const auto book = DividendBook::create(state, batch->currency, std::nullopt);
    return book && std::ranges::any_of(book->effective(), [&](const DividendMovement* each) {
               return each->kind == DividendMovementKind::advance && each->participantID == target.participantID &&
                      book->advanceRemaining(each->id) > 0;
           });
}

QString word(std::string_view key, std::string_view locale)
{
    return wordIn(locale, capitalWords(), key);
}

QString whyNothingLeft(std::string_view action, const DividendActions::Target& target, const DividendContext& context,
                       std::string_view today, std::string_view locale)
{
    if (action == DividendAction::returnAdvance) {
        const auto left = DividendRules::limit(begun(action, target, context.state, today), context);
        return left.value_or(0) > 0 ? QString{} : word("whyNot.advanceSettled", locale);
    }
    const auto unpaid = DividendRules::limit(begun(DividendAction::pay, target, context.state, today), context);
    if (unpaid.value_or(0) < 1)
        return word("whyNot.lineSettled", locale);
    if (action == DividendAction::apply && !hasOpenAdvance(context.state, target))
        return word("whyNot.noAdvance", locale);
    return {};
}

}

QString DividendActions::whyNot(std::string_view action, const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto context = DividendContext::of(snapshot);
    if (!DividendRules::mayUse(action, snapshot.currentMember))
        return refusalText(DividendRefusal::noAuthority, locale);
    const bool isNew = action == DividendAction::allocate || action == DividendAction::advance;
    if (isNew && !context.dividendsEnabled)
        return refusalText(DividendRefusal::dividendsDisabled, locale);
    if (isNew && !RecordDrafts::hasPeople(context.state.participants))
        return word("whyNot.noParticipants", locale);
    if (DividendForms::movesMoney(action) && DividendAccess::accounts(snapshot, std::nullopt).empty())
        return word("whyNot.noPayingAccount", locale);
    return {};
}

QString DividendActions::whyNot(std::string_view action, const Target& target, const LedgerSnapshot& snapshot,
                                std::string_view today, std::string_view locale)
{
    const auto general = whyNot(action, snapshot, locale);
    if (!general.isEmpty())
        return general;
    if (DividendForms::settlesLine(action) || DividendForms::usesAdvance(action))
        return whyNothingLeft(action, target, DividendContext::of(snapshot), today, locale);
    const auto context =
        target.movementID.empty() ? DividendContext::of(snapshot) : DividendContext::of(snapshot, target.movementID);
    const auto refused = DividendRules::whyNot(begun(action, target, context.state, today), context);
    if (!refused)
        return {};
    if (action == DividendAction::cancelBatch && *refused == DividendRefusal::dependencies)
        return word("hint.cancel", locale);
    return refusalText(*refused, locale);
}
