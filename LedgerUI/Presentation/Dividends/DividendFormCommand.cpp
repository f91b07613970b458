#include "LedgerCore/Domain/Dividends/DividendCommands.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Dividends/DividendForm.h"

namespace {

namespace Action = DividendAction;

std::optional<RecordPart> partOf(DividendRefusal refusal)
{
    switch (refusal) {
    case DividendRefusal::nameRequired:
        return RecordPart::name;
    case DividendRefusal::participantUnavailable:
        return RecordPart::person;
    case DividendRefusal::memberUnavailable:
        return RecordPart::member;
    case DividendRefusal::ratioInvalid:
        return RecordPart::ratio;
    case DividendRefusal::periodRequired:
        return RecordPart::period;
    case DividendRefusal::currencyUnsupported:
        return RecordPart::currency;
    case DividendRefusal::amountNotPositive:
    case DividendRefusal::amountLimit:
    case DividendRefusal::overpayment:
    case DividendRefusal::overapplication:
        return RecordPart::amount;
    case DividendRefusal::sharesIncomplete:
        return RecordPart::people;
    case DividendRefusal::batchUnavailable:
        return RecordPart::batch;
    case DividendRefusal::advanceUnavailable:
        return RecordPart::advance;
    default:
        return std::nullopt;
    }
}

using Problems = std::vector<DividendProblem>;
using Made = std::expected<DividendCommand, Problems>;

Made checked(DividendCommands::Built built)
{
    return RecordDrafts::checked<DividendCommand>(std::move(built), partOf);
}

/// What is missing or cannot be read, before the rules are asked.
Problems missing(const DividendForm& form, const LedgerSnapshot& snapshot, std::string_view locale)
{
    Problems problems;
    const auto& action = form.route.action;
    const auto need = [&](RecordPart part, const std::string& value, std::optional<DividendRefusal> refusal) {
        if (value.empty())
            problems.push_back({.part = part, .refusal = refusal});
    };
    if (action == Action::advance)
        need(RecordPart::person, form.participantID, DividendRefusal::participantUnavailable);
    if (DividendForms::settlesLine(action))
        need(RecordPart::batch, form.batchID, DividendRefusal::batchUnavailable);
    if (DividendForms::usesAdvance(action))
        need(RecordPart::advance, form.advanceID, DividendRefusal::advanceUnavailable);
    if (DividendForms::movesMoney(action))
        need(RecordPart::account, form.accountID, std::nullopt);
    const auto amount = Money::parse(form.amount, form.currency, locale);
    if (!amount)
        problems.push_back(
            {.part = RecordPart::amount,
             .refusal = form.amount.empty() ? std::optional{DividendRefusal::amountNotPositive} : std::nullopt,
             .money = form.amount.empty() ? std::nullopt : std::optional{amount.error()}});
    if (action != Action::allocate)
        return problems;
    for (const auto* each : DividendForms::people(snapshot)) {
        const auto ratio = Money::parse(RecordDrafts::typedFor(form.ratios, each->id), "CNY", locale);
        if (!ratio && !form.leftOut.contains(each->id))
            problems.push_back({.part = RecordPart::people, .personID = each->id, .money = ratio.error()});
    }
    return problems;
}

Made allocation(const DividendForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    return checked(DividendCommands::allocate(DividendContext::of(snapshot), std::move(issue),
                                              {.period = form.period,
                                               .currency = form.currency,
                                               .amount = form.amount,
                                               .shares = DividendForms::shareTexts(form, snapshot),
                                               .note = form.note},
                                              locale));
}

Made settled(const DividendForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    const auto context = DividendContext::of(snapshot);
    DividendCommands::Settlement settlement{.batchID = form.batchID,
                                            .participantID = form.participantID,
                                            .advanceID = form.advanceID,
                                            .amount = form.amount,
                                            .accountID = form.accountID,
                                            .note = form.note,
                                            .attachmentIDs = form.receiptIDs};
    if (form.route.action == Action::pay)
        return checked(DividendCommands::pay(context, std::move(issue), std::move(settlement), locale));
    if (form.route.action == Action::apply)
        return checked(DividendCommands::apply(context, std::move(issue), std::move(settlement), locale));
    return checked(DividendCommands::returnAdvance(context, std::move(issue), std::move(settlement), locale));
}

}

std::expected<DividendCommand, std::vector<DividendProblem>> DividendForms::command(const DividendForm& form,
                                                                                    const LedgerSnapshot& snapshot,
                                                                                    CommandIssue issue,
                                                                                    std::string_view locale)
{
    const auto context = DividendContext::of(snapshot);
    const auto& action = form.route.action;
    if (action == Action::fillFromOwnership)
        return checked(DividendCommands::fillFromOwnership(context, std::move(issue)));
    if (action == Action::cancelBatch)
        return checked(DividendCommands::cancelBatch(context, std::move(issue), form.route.batchID, form.note));
    if (action == Action::reverse)
        return checked(DividendCommands::reverse(DividendContext::of(snapshot, form.route.movementID), std::move(issue),
                                                 form.route.movementID, form.note));
    if (action == Action::setParticipant)
        return checked(DividendCommands::setParticipant(
            context, std::move(issue),
            {.id = form.participantID.empty() ? std::nullopt : std::optional{form.participantID},
             .name = form.name,
             .memberID = form.memberID,
             .percentage = form.ratio,
             .archived = form.archived},
            locale));
    if (auto problems = missing(form, snapshot, locale); !problems.empty())
        return std::unexpected(std::move(problems));
    if (action == Action::allocate)
        return allocation(form, snapshot, std::move(issue), locale);
    if (action == Action::advance)
        return checked(DividendCommands::advance(context, std::move(issue),
                                                 {.participantID = form.participantID,
                                                  .currency = form.currency,
                                                  .amount = form.amount,
                                                  .accountID = form.accountID,
                                                  .note = form.note,
                                                  .attachmentIDs = form.receiptIDs},
                                                 locale));
    return settled(form, snapshot, std::move(issue), locale);
}
