#include "LedgerCore/Domain/Dividends/DividendCommands.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
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

/// Why the amount that is typed cannot be read; nothing while its currency is to be chosen first.
std::optional<DividendProblem> unreadableAmount(const DividendForm& form, std::string_view locale)
{
    if (form.amount.empty() || form.currency.empty())
        return std::nullopt;
    const auto amount = Money::parse(form.amount, form.currency, locale);
    return amount ? std::nullopt : std::optional{DividendProblem{.part = RecordPart::amount, .money = amount.error()}};
}

/// What is missing or cannot be read, before the rules are asked.
Problems missing(const DividendForm& form, std::string_view locale)
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
    if (action == Action::advance)
        need(RecordPart::currency, form.currency, DividendRefusal::currencyUnsupported);
    if (auto problem = unreadableAmount(form, locale))
        problems.push_back(*std::move(problem));
    else
        need(RecordPart::amount, form.amount, DividendRefusal::amountNotPositive);
    if (action != Action::allocate)
        return problems;
    for (const auto* each : DividendForms::people(form)) {
        if (!form.leftOut.contains(each->id) &&
            !BasisPoints::parse(RecordDrafts::typedFor(form.ratios, each->id), locale))
            problems.push_back({.part = RecordPart::people, .personID = each->id, .isNoShare = true});
    }
    return problems;
}

Made allocation(const DividendForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    return checked(DividendCommands::allocate(DividendContext::of(snapshot), std::move(issue),
                                              {.period = form.period,
                                               .currency = form.currency,
                                               .amount = form.amount,
                                               .shares = DividendForms::shareTexts(form),
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
    if (auto problems = missing(form, locale); !problems.empty())
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

DividendForm DividendForms::leftAmount(DividendForm form, const std::string& personID, std::string_view locale)
{
    if (!personID.empty()) {
        const auto typed = RecordDrafts::typedFor(form.ratios, personID);
        if (typed.empty() || BasisPoints::parse(typed, locale))
            return form;
        return RecordDrafts::judgedAmount(std::move(form), DividendProblem{.personID = personID, .isNoShare = true});
    }
    if (auto problem = unreadableAmount(form, locale))
        return RecordDrafts::judgedAmount(std::move(form), *std::move(problem));
    const auto amount = Money::parse(form.amount, form.currency, locale);
    if (!amount || *amount > 0)
        return form;
    return RecordDrafts::judgedAmount(std::move(form), DividendProblem{.refusal = DividendRefusal::amountNotPositive});
}

DividendForm DividendForms::refusedPaste(DividendForm form, PasteRefusal refusal, std::string personID)
{
    return RecordDrafts::judgedAmount(std::move(form),
                                      DividendProblem{.personID = std::move(personID), .paste = refusal});
}

DividendForm DividendForms::restored(const DividendCommand& command, const LedgerSnapshot& snapshot,
                                     std::string_view locale)
{
    const auto text = [](const std::optional<std::string>& value) { return value.value_or(""); };
    auto currency = text(command.currency);
    static const DividendState none;
    const auto& state = snapshot.dividends ? *snapshot.dividends : none;
    if (const auto* batch = RecordDrafts::find(state.batches, text(command.batchID)); batch && currency.empty())
        currency = batch->currency;
    if (const auto* advance = RecordDrafts::find(state.movements, text(command.advanceID)); advance && currency.empty())
        currency = advance->currency;
    auto form = opened({.action = command.action,
                        .participantID = text(command.participantID),
                        .batchID = text(command.batchID),
                        .advanceID = text(command.advanceID),
                        .movementID = text(command.movementID),
                        .currency = currency},
                       snapshot, locale);
    // What may have been carried out already is shown as it was sent, also where it could not be sent anew.
    if (command.participantID)
        form.participantID = *command.participantID;
    form.batchID = text(command.batchID);
    form.advanceID = text(command.advanceID);
    form.currency = currency;
    form.accountID = text(command.accountID);
    form.note = text(command.note);
    form.period = text(command.period);
    form.receiptIDs = command.attachmentIDs.value_or(std::vector<std::string>{});
    form.amount = command.amountMinor ? Money::formatDigits(*command.amountMinor, currency, locale) : std::string{};
    if (command.action == Action::setParticipant) {
        form.name = text(command.name);
        form.memberID = command.memberID;
        form.archived = command.archived.value_or(false);
        form.ratio = BasisPoints::text(command.ratioBps.value_or(0), locale);
    }
    if (!command.shares)
        return form;
    form.leftOut.clear();
    for (const auto& person : form.captured.participants)
        form.leftOut.insert(person.id);
    for (const auto& share : *command.shares) {
        form.ratios[share.participantID] = BasisPoints::text(share.ratioBps, locale);
        form.leftOut.erase(share.participantID);
    }
    return form;
}
