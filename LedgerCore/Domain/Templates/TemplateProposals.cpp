#include "LedgerCore/Domain/Templates/TemplateProposals.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "LedgerCore/Domain/Templates/TemplateRules.h"

bool TemplateProposals::mayRecord(const EntryTemplate& kept, const LedgerSnapshot& snapshot)
{
    const auto* const account = snapshot.account(TemplateRules::accountID(kept.entry));
    return account && TemplateRules::mayRecord(kept.entry, *account, snapshot.currentMember);
}

std::vector<TemplateProposal> TemplateProposals::open(const std::vector<EntryTemplate>& templates,
                                                      const LedgerSnapshot& snapshot, std::string_view today)
{
    std::vector<TemplateProposal> proposals;
    for (const auto& each : templates) {
        if (!mayRecord(each, snapshot))
            continue;
        for (auto& day : TemplateSchedule::openDays(each, today))
            proposals.push_back({.occurrence = {.templateID = each.id, .day = std::move(day)}, .name = each.name});
    }
    std::ranges::sort(proposals, {}, [](const TemplateProposal& each) {
        return std::tie(each.occurrence.day, each.name, each.occurrence.templateID);
    });
    return proposals;
}
