#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Capital/CapitalRules.h"
#include "LedgerCore/Domain/Records/Requests/SectionChange.h"

/// Builds capital commands from what a person typed. Each is either acceptable on the section as seen, or the reason
/// why it is not. Amounts and percentages are texts in `locale`.
namespace CapitalCommands {

using Built = std::expected<CapitalCommand, CapitalRefusal>;

struct Participant {
    std::optional<std::string> id = {}; // unset for a new owner
    std::string name;
    std::optional<std::string> memberID = {};
    bool archived = false;
};
Built setParticipant(const CapitalContext& context, CommandIssue issue, Participant participant);

struct Contribution {
    std::string participantID;
    std::string currency;
    std::string amount;
    std::string accountID;
    std::string note = {};
    std::vector<std::string> attachmentIDs = {};
};
Built contribute(const CapitalContext& context, CommandIssue issue, Contribution contribution, std::string_view locale);

/// Leave out a blank note.
Built reverse(const CapitalContext& context, CommandIssue issue, std::string contributionID, std::string note);

/// One owner's typed amount or percentage.
struct OwnerText {
    std::string participantID;
    std::string text;
};

enum class ZeroBaseline { unconfirmed, confirmed };

struct Baseline {
    std::string currency;
    std::string throughDate;
    std::vector<OwnerText> amounts;
    ZeroBaseline zero = ZeroBaseline::unconfirmed; // whether the person confirmed that nothing was paid in
};
/// Supersedes the currency's baseline in force.
Built setBaseline(const CapitalContext& context, CommandIssue issue, const Baseline& baseline, std::string_view locale);

/// `issue.date` is the day from which the shares hold.
Built setOwnership(const CapitalContext& context, CommandIssue issue, const std::vector<OwnerText>& percentages,
                   std::string_view locale);

enum class SidebarEntry { hidden, shown };
Built setVisibility(const CapitalContext& context, CommandIssue issue, SidebarEntry entry);

}
