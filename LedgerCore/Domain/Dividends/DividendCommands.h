#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendRules.h"
#include "LedgerCore/Domain/Records/Requests/SectionChange.h"

/// Builds dividend commands from what a person typed. Each is either acceptable on the section as seen, or the reason
/// why it is not. Amounts and percentages are texts in `locale`.
namespace DividendCommands {

using Built = std::expected<DividendCommand, DividendRefusal>;

struct Participant {
    std::optional<std::string> id = {}; // unset for a new participant
    std::string name;
    std::optional<std::string> memberID = {};
    std::string percentage; // the default ratio
    bool archived = false;
};
Built setParticipant(const DividendContext& context, CommandIssue issue, Participant participant,
                     std::string_view locale);

enum class SidebarEntry { hidden, shown };
Built setVisibility(const DividendContext& context, CommandIssue issue, SidebarEntry entry);

struct ShareText {
    std::string participantID;
    std::string percentage;
};
/// One share per text, or nothing when a text is no percentage of at most two decimals.
std::optional<std::vector<DividendShare>> shares(const std::vector<ShareText>& texts, std::string_view locale);

struct Allocation {
    std::string period;
    std::string currency;
    std::string amount;
    std::vector<ShareText> shares;
    std::string note = {};
};
Built allocate(const DividendContext& context, CommandIssue issue, Allocation allocation, std::string_view locale);

Built cancelBatch(const DividendContext& context, CommandIssue issue, std::string batchID, std::string note);

/// Money paid out before or outside an allocation.
struct Advance {
    std::string participantID;
    std::string currency;
    std::string amount;
    std::string accountID;
    std::string note = {};
    std::vector<std::string> attachmentIDs = {};
};
Built advance(const DividendContext& context, CommandIssue issue, Advance advance, std::string_view locale);

/// What settles a line or an advance; each action reads the fields that it needs.
struct Settlement {
    std::string batchID = {};       // pay, apply
    std::string participantID = {}; // pay, apply
    std::string advanceID = {};     // apply, return
    std::string amount;
    std::string accountID = {}; // pay, return
    std::string note = {};
    std::vector<std::string> attachmentIDs = {};
};
Built pay(const DividendContext& context, CommandIssue issue, Settlement settlement, std::string_view locale);
Built apply(const DividendContext& context, CommandIssue issue, Settlement settlement, std::string_view locale);
Built returnAdvance(const DividendContext& context, CommandIssue issue, Settlement settlement, std::string_view locale);

Built reverse(const DividendContext& context, CommandIssue issue, std::string movementID, std::string note);

/// Makes the owners' shares in force on the day of `issue` the default ratios.
Built fillFromOwnership(const DividendContext& context, CommandIssue issue);

}
