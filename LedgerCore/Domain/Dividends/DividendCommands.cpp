#include "LedgerCore/Domain/Dividends/DividendCommands.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Capital/SectionCommands.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

using DividendCommands::Built;
using SectionCommands::unlessBlank;
using enum DividendRefusal;

DividendCommand begin(std::string_view action, const DividendContext& context, CommandIssue issue)
{
    return SectionCommands::begin<DividendCommand>(action, context.state.revision, std::move(issue));
}

Built checked(DividendCommand command, const DividendContext& context)
{
    if (const auto refused = DividendRules::whyNot(command, context))
        return std::unexpected(*refused);
    return command;
}

std::optional<std::vector<std::string>> unlessEmpty(std::vector<std::string> texts)
{
    return texts.empty() ? std::nullopt : std::optional{std::move(texts)};
}

/// The currency of a record is not typed: it is that of what the command settles.
template <class Record>
std::string currencyOf(const std::vector<Record>& records, std::string_view id)
{
    const auto found = std::ranges::find(records, id, &Record::id);
    return found == records.end() ? std::string{} : found->currency;
}

Built settle(DividendCommand command, const DividendContext& context, DividendCommands::Settlement settlement,
             const std::string& currency, std::string_view locale)
{
    // An amount in no currency cannot be read; the rules then say what is missing.
    if (!currency.empty()) {
        const auto amount = Money::parse(settlement.amount, currency, locale);
        if (!amount)
            return std::unexpected(amountNotPositive);
        command.amountMinor = *amount;
    }
    command.note = unlessBlank(settlement.note);
    command.attachmentIDs = unlessEmpty(std::move(settlement.attachmentIDs));
    return checked(std::move(command), context);
}

}

Built DividendCommands::setParticipant(const DividendContext& context, CommandIssue issue, Participant participant,
                                       std::string_view locale)
{
    const auto ratio = BasisPoints::parse(participant.percentage, locale);
    if (!ratio)
        return std::unexpected(ratioInvalid);
    auto command = begin(DividendAction::setParticipant, context, std::move(issue));
    command.participantID = std::move(participant.id);
    command.name = TextFold::trimmed(participant.name);
    command.memberID = std::move(participant.memberID);
    command.ratioBps = ratio;
    command.archived = participant.archived;
    return checked(std::move(command), context);
}

Built DividendCommands::setVisibility(const DividendContext& context, CommandIssue issue, SidebarEntry entry)
{
    auto command = begin(DividendAction::setVisibility, context, std::move(issue));
    command.showInSidebar = entry == SidebarEntry::shown;
    return checked(std::move(command), context);
}

std::optional<std::vector<DividendShare>> DividendCommands::shares(const std::vector<ShareText>& texts,
                                                                   std::string_view locale)
{
    std::vector<DividendShare> shares;
    for (const auto& text : texts) {
        const auto ratio = BasisPoints::parse(text.percentage, locale);
        if (!ratio)
            return std::nullopt;
        shares.push_back({text.participantID, *ratio});
    }
    return shares;
}

Built DividendCommands::allocate(const DividendContext& context, CommandIssue issue, Allocation allocation,
                                 std::string_view locale)
{
    const auto amount = Money::parse(allocation.amount, allocation.currency, locale);
    if (!amount)
        return std::unexpected(amountNotPositive);
    auto command = begin(DividendAction::allocate, context, std::move(issue));
    command.shares = shares(allocation.shares, locale);
    if (!command.shares)
        return std::unexpected(sharesIncomplete);
    command.period = TextFold::trimmed(allocation.period);
    command.currency = std::move(allocation.currency);
    command.amountMinor = *amount;
    command.note = unlessBlank(allocation.note);
    return checked(std::move(command), context);
}

Built DividendCommands::cancelBatch(const DividendContext& context, CommandIssue issue, std::string batchID,
                                    std::string note)
{
    auto command = begin(DividendAction::cancelBatch, context, std::move(issue));
    command.batchID = std::move(batchID);
    command.note = unlessBlank(note);
    return checked(std::move(command), context);
}

Built DividendCommands::advance(const DividendContext& context, CommandIssue issue, Advance advance,
                                std::string_view locale)
{
    const auto amount = Money::parse(advance.amount, advance.currency, locale);
    if (!amount)
        return std::unexpected(amountNotPositive);
    auto command = begin(DividendAction::advance, context, std::move(issue));
    command.participantID = std::move(advance.participantID);
    command.currency = std::move(advance.currency);
    command.amountMinor = *amount;
    command.accountID = std::move(advance.accountID);
    command.note = unlessBlank(advance.note);
    command.attachmentIDs = unlessEmpty(std::move(advance.attachmentIDs));
    return checked(std::move(command), context);
}

Built DividendCommands::pay(const DividendContext& context, CommandIssue issue, Settlement settlement,
                            std::string_view locale)
{
    auto command = begin(DividendAction::pay, context, std::move(issue));
    const auto currency = currencyOf(context.state.batches, settlement.batchID);
    command.currency = currency;
    command.batchID = std::move(settlement.batchID);
    command.participantID = std::move(settlement.participantID);
    command.accountID = std::move(settlement.accountID);
    return settle(std::move(command), context, std::move(settlement), currency, locale);
}

Built DividendCommands::apply(const DividendContext& context, CommandIssue issue, Settlement settlement,
                              std::string_view locale)
{
    auto command = begin(DividendAction::apply, context, std::move(issue));
    const auto currency = currencyOf(context.state.batches, settlement.batchID);
    command.batchID = std::move(settlement.batchID);
    command.participantID = std::move(settlement.participantID);
    command.advanceID = std::move(settlement.advanceID);
    return settle(std::move(command), context, std::move(settlement), currency, locale);
}

Built DividendCommands::returnAdvance(const DividendContext& context, CommandIssue issue, Settlement settlement,
                                      std::string_view locale)
{
    auto command = begin(DividendAction::returnAdvance, context, std::move(issue));
    const auto currency = currencyOf(context.state.movements, settlement.advanceID);
    command.currency = currency;
    command.advanceID = std::move(settlement.advanceID);
    command.accountID = std::move(settlement.accountID);
    return settle(std::move(command), context, std::move(settlement), currency, locale);
}

Built DividendCommands::reverse(const DividendContext& context, CommandIssue issue, std::string movementID,
                                std::string note)
{
    auto command = begin(DividendAction::reverse, context, std::move(issue));
    command.movementID = std::move(movementID);
    command.note = unlessBlank(note);
    return checked(std::move(command), context);
}

Built DividendCommands::fillFromOwnership(const DividendContext& context, CommandIssue issue)
{
    return checked(begin(DividendAction::fillFromOwnership, context, std::move(issue)), context);
}
