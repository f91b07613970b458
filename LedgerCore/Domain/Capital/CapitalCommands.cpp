#include "LedgerCore/Domain/Capital/CapitalCommands.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Capital/SectionCommands.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

using CapitalCommands::Built;
using SectionCommands::unlessBlank;
using enum CapitalRefusal;

CapitalCommand begin(std::string_view action, const CapitalContext& context, CommandIssue issue)
{
    return SectionCommands::begin<CapitalCommand>(action, context.state.revision, std::move(issue));
}

Built checked(CapitalCommand command, const CapitalContext& context)
{
    if (const auto refused = CapitalRules::whyNot(command, context))
        return std::unexpected(*refused);
    return command;
}

/// The name that a line keeps; an unknown owner is refused by the rules.
std::string nameOf(const CapitalState& state, std::string_view id)
{
    const auto found = std::ranges::find(state.participants, id, &CapitalParticipant::id);
    return found == state.participants.end() ? std::string{} : found->name;
}

}

Built CapitalCommands::setParticipant(const CapitalContext& context, CommandIssue issue, Participant participant)
{
    auto command = begin(CapitalAction::setParticipant, context, std::move(issue));
    command.participantID = std::move(participant.id);
    command.name = TextFold::trimmed(participant.name);
    command.memberID = std::move(participant.memberID);
    command.archived = participant.archived;
    return checked(std::move(command), context);
}

Built CapitalCommands::contribute(const CapitalContext& context, CommandIssue issue, Contribution contribution,
                                  std::string_view locale)
{
    const auto amount = Money::parse(contribution.amount, contribution.currency, locale);
    if (!amount || *amount < 1)
        return std::unexpected(amountNotPositive);
    auto command = begin(CapitalAction::contribute, context, std::move(issue));
    command.participantID = std::move(contribution.participantID);
    command.currency = std::move(contribution.currency);
    command.amountMinor = *amount;
    command.accountID = std::move(contribution.accountID);
    command.note = unlessBlank(contribution.note);
    if (!contribution.attachmentIDs.empty())
        command.attachmentIDs = std::move(contribution.attachmentIDs);
    return checked(std::move(command), context);
}

Built CapitalCommands::reverse(const CapitalContext& context, CommandIssue issue, std::string contributionID,
                               std::string note)
{
    auto command = begin(CapitalAction::reverse, context, std::move(issue));
    command.contributionID = std::move(contributionID);
    command.note = unlessBlank(note);
    return checked(std::move(command), context);
}

Built CapitalCommands::setBaseline(const CapitalContext& context, CommandIssue issue, const Baseline& baseline,
                                   std::string_view locale)
{
    std::vector<CapitalAmountLine> lines;
    for (const auto& typed : baseline.amounts) {
        const auto amount = Money::parse(typed.text, baseline.currency, locale);
        if (!amount)
            return std::unexpected(amountUnreadable);
        if (*amount < 0)
            return std::unexpected(baselineNegative);
        lines.push_back({typed.participantID, nameOf(context.state, typed.participantID), *amount});
    }
    const bool isZero = std::ranges::all_of(lines, [](const auto& line) { return line.amountMinor == 0; });
    if (isZero && baseline.zero != ZeroBaseline::confirmed)
        return std::unexpected(zeroBaselineUnconfirmed);

    auto command = begin(CapitalAction::setBaseline, context, std::move(issue));
    command.currency = baseline.currency;
    command.throughDate = baseline.throughDate;
    command.entries = std::move(lines);
    if (const auto* current = CapitalMath::currentBaseline(context.state, baseline.currency))
        command.replacesID = current->id;
    return checked(std::move(command), context);
}

Built CapitalCommands::setOwnership(const CapitalContext& context, CommandIssue issue,
                                    const std::vector<OwnerText>& percentages, std::string_view locale)
{
    auto command = begin(CapitalAction::setOwnership, context, std::move(issue));
    auto& lines = command.ownership.emplace();
    for (const auto& typed : percentages) {
        const auto share = BasisPoints::parse(typed.text, locale);
        if (!share)
            return std::unexpected(sharesIncomplete);
        lines.push_back({typed.participantID, nameOf(context.state, typed.participantID), *share});
    }
    return checked(std::move(command), context);
}

Built CapitalCommands::setVisibility(const CapitalContext& context, CommandIssue issue, SidebarEntry entry)
{
    auto command = begin(CapitalAction::setVisibility, context, std::move(issue));
    command.showInSidebar = entry == SidebarEntry::shown;
    return checked(std::move(command), context);
}
