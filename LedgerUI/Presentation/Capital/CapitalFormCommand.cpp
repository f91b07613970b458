#include "LedgerCore/Domain/Capital/CapitalCommands.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Capital/CapitalForm.h"

namespace {

namespace Action = CapitalAction;

/// Where the message of a refusal stands.
std::optional<RecordPart> partOf(CapitalRefusal refusal)
{
    switch (refusal) {
    case CapitalRefusal::participantUnavailable:
        return RecordPart::person;
    case CapitalRefusal::nameRequired:
        return RecordPart::name;
    case CapitalRefusal::memberUnavailable:
        return RecordPart::member;
    case CapitalRefusal::currencyUnsupported:
        return RecordPart::currency;
    case CapitalRefusal::accountUnavailable:
        return RecordPart::account;
    case CapitalRefusal::amountNotPositive:
    case CapitalRefusal::amountUnreadable:
    case CapitalRefusal::amountLimit:
        return RecordPart::amount;
    case CapitalRefusal::baselineBoundary:
    case CapitalRefusal::baselineOverlap:
        return RecordPart::throughDate;
    case CapitalRefusal::zeroBaselineUnconfirmed:
        return RecordPart::zero;
    case CapitalRefusal::baselineNegative:
    case CapitalRefusal::baselineCoverage:
    case CapitalRefusal::sharesIncomplete:
        return RecordPart::people;
    default:
        return std::nullopt;
    }
}

/// What keeps the amount or the percentage that is typed for a person from being used, each with its own reason.
std::optional<CapitalProblem> rowProblem(const CapitalForm& form, const std::string& ownerID, std::string_view locale)
{
    if (form.route.action == Action::setOwnership) {
        if (BasisPoints::parse(RecordDrafts::typedFor(form.ratios, ownerID), locale))
            return std::nullopt;
        return CapitalProblem{.part = RecordPart::people, .personID = ownerID, .isNoShare = true};
    }
    const auto amount = Money::parse(RecordDrafts::typedFor(form.amounts, ownerID), form.currency, locale);
    if (!amount)
        return CapitalProblem{.part = RecordPart::people, .personID = ownerID, .money = amount.error()};
    if (*amount < 0)
        return CapitalProblem{
            .part = RecordPart::people, .personID = ownerID, .refusal = CapitalRefusal::baselineNegative};
    return std::nullopt;
}

std::vector<CapitalProblem> unreadable(const CapitalForm& form, std::string_view locale)
{
    std::vector<CapitalProblem> problems;
    for (const auto& owner : form.capturedPeople) {
        if (auto problem = rowProblem(form, owner.id, locale))
            problems.push_back(*std::move(problem));
    }
    return problems;
}

using Made = std::expected<CapitalCommand, std::vector<CapitalProblem>>;

Made checked(CapitalCommands::Built built)
{
    return RecordDrafts::checked<CapitalCommand>(std::move(built), partOf);
}

/// What keeps the amount of a contribution from being used; a text that cannot be read keeps its own reason.
std::optional<CapitalProblem> amountProblem(const CapitalForm& form, std::string_view locale)
{
    const auto text = RecordDrafts::typedFor(form.amounts, form.participantID);
    const auto amount = Money::parse(text, form.currency, locale);
    const bool isUnknown = form.currency.empty() && !text.empty(); // its currency is to be chosen first
    if (isUnknown || (amount && *amount > 0))
        return std::nullopt;
    return CapitalProblem{.part = RecordPart::amount,
                          .refusal = CapitalRefusal::amountNotPositive,
                          .money = amount || text.empty() ? std::nullopt : std::optional{amount.error()}};
}

Made contribution(const CapitalForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    std::vector<CapitalProblem> problems;
    if (form.participantID.empty())
        problems.push_back({.part = RecordPart::person, .refusal = CapitalRefusal::participantUnavailable});
    if (form.currency.empty())
        problems.push_back({.part = RecordPart::currency, .refusal = CapitalRefusal::currencyUnsupported});
    if (form.accountID.empty())
        problems.push_back({.part = RecordPart::account, .refusal = CapitalRefusal::accountUnavailable});
    if (auto problem = amountProblem(form, locale))
        problems.push_back(*std::move(problem));
    if (!problems.empty())
        return std::unexpected(std::move(problems));
    return checked(CapitalCommands::contribute(CapitalContext::of(snapshot), std::move(issue),
                                               {.participantID = form.participantID,
                                                .currency = form.currency,
                                                .amount = RecordDrafts::typedFor(form.amounts, form.participantID),
                                                .accountID = form.accountID,
                                                .note = form.note,
                                                .attachmentIDs = form.receiptIDs},
                                               locale));
}

Made baseline(const CapitalForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    auto problems = unreadable(form, locale);
    if (!form.historicalDate)
        problems.push_back({.part = RecordPart::throughDate, .refusal = CapitalRefusal::baselineBoundary});
    if (!problems.empty())
        return std::unexpected(std::move(problems));
    return checked(CapitalCommands::setBaseline(
        CapitalContext::of(snapshot), std::move(issue),
        {.currency = form.currency,
         .throughDate = form.historicalDate.value_or(""),
         .amounts = RecordDrafts::textsOf<CapitalCommands::OwnerText>(form.amounts, form.capturedPeople),
         .zero = form.zeroConfirmed ? CapitalCommands::ZeroBaseline::confirmed
                                    : CapitalCommands::ZeroBaseline::unconfirmed},
        locale));
}

Made ownership(const CapitalForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    auto problems = unreadable(form, locale);
    if (!problems.empty())
        return std::unexpected(std::move(problems));
    issue.date = form.startDate;
    return checked(CapitalCommands::setOwnership(
        CapitalContext::of(snapshot), std::move(issue),
        RecordDrafts::textsOf<CapitalCommands::OwnerText>(form.ratios, form.capturedPeople), locale));
}

}

std::expected<CapitalCommand, std::vector<CapitalProblem>> CapitalForms::command(const CapitalForm& form,
                                                                                 const LedgerSnapshot& snapshot,
                                                                                 CommandIssue issue,
                                                                                 std::string_view locale)
{
    const auto& action = form.route.action;
    if (action == Action::contribute)
        return contribution(form, snapshot, std::move(issue), locale);
    if (action == Action::setBaseline)
        return baseline(form, snapshot, std::move(issue), locale);
    if (action == Action::setOwnership)
        return ownership(form, snapshot, std::move(issue), locale);
    if (action == Action::reverse)
        return checked(CapitalCommands::reverse(CapitalContext::of(snapshot, form.route.contributionID),
                                                std::move(issue), form.route.contributionID, form.note));
    return checked(CapitalCommands::setParticipant(
        CapitalContext::of(snapshot), std::move(issue),
        {.id = form.participantID.empty() ? std::nullopt : std::optional{form.participantID},
         .name = form.name,
         .memberID = form.memberID,
         .archived = form.archived}));
}

CapitalForm CapitalForms::leftAmount(CapitalForm form, const std::string& personID, std::string_view locale)
{
    const auto& texts = form.route.action == Action::setOwnership ? form.ratios : form.amounts;
    const auto problem = personID.empty() ? amountProblem(form, locale) : rowProblem(form, personID, locale);
    if (!problem || RecordDrafts::typedFor(texts, personID.empty() ? form.participantID : personID).empty())
        return form;
    return RecordDrafts::judgedAmount(std::move(form), *problem);
}

CapitalForm CapitalForms::refusedPaste(CapitalForm form, PasteRefusal refusal, std::string personID)
{
    return RecordDrafts::judgedAmount(std::move(form),
                                      CapitalProblem{.personID = std::move(personID), .paste = refusal});
}

CapitalForm CapitalForms::restored(const CapitalCommand& command, const LedgerSnapshot& snapshot,
                                   std::string_view locale)
{
    auto form = opened({.action = command.action,
                        .participantID = command.participantID.value_or(""),
                        .contributionID = command.contributionID.value_or(""),
                        .currency = command.currency.value_or("")},
                       snapshot, command.date, locale);
    form.participantID = command.participantID.value_or("");
    form.currency = command.currency.value_or("");
    form.accountID = command.accountID.value_or("");
    form.note = command.note.value_or("");
    form.receiptIDs = command.attachmentIDs.value_or(std::vector<std::string>{});
    if (command.action == Action::setParticipant) {
        form.name = command.name.value_or("");
        form.memberID = command.memberID;
        form.archived = command.archived.value_or(false);
    }
    if (command.amountMinor)
        form.amounts[form.participantID] = Money::formatDigits(*command.amountMinor, form.currency, locale);
    form.historicalDate = command.throughDate;
    for (const auto& line : command.entries.value_or(std::vector<CapitalAmountLine>{}))
        form.amounts[line.participantID] = Money::formatDigits(line.amountMinor, form.currency, locale);
    for (const auto& line : command.ownership.value_or(std::vector<CapitalOwnershipLine>{}))
        form.ratios[line.participantID] = BasisPoints::text(line.ownershipBps, locale);
    form.startDate = command.date;
    return form;
}
