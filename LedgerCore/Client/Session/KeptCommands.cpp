#include "LedgerCore/Client/Session/KeptCommands.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

bool belongsTo(const KeptEntry& kept, const MemberIdentity& member)
{
    return kept.endpoint == member.endpoint && kept.companyID == member.companyID && kept.memberID == member.memberID;
}

}

const KeptEntry* KeptCommands::entry(const MemberIdentity& member) const
{
    const auto found = std::ranges::find_if(m_entries, [&](const KeptEntry& each) { return belongsTo(each, member); });
    return found == m_entries.end() ? nullptr : &*found;
}

const KeptEntry* KeptCommands::entry(const MemberIdentity& member, const std::string& idempotencyKey) const
{
    const auto found = std::ranges::find_if(m_entries, [&](const KeptEntry& each) {
        return belongsTo(each, member) && each.input.idempotencyKey == idempotencyKey;
    });
    return found == m_entries.end() ? nullptr : &*found;
}

bool KeptCommands::hasUnconfirmed() const
{
    return std::ranges::any_of(m_entries, &KeptEntry::outcomeUnknown) ||
           std::ranges::any_of(m_sections, [](const auto& each) {
               return std::ranges::any_of(each.second, &KeptSectionCommand::outcomeUnknown);
           });
}

bool KeptCommands::hasUntried(const std::function<bool(const KeptEntry&)>& isSafe) const
{
    return std::ranges::any_of(m_entries,
                               [&](const KeptEntry& each) { return !each.outcomeUnknown && !isSafe(each); }) ||
           std::ranges::any_of(m_sections, [](const auto& each) {
               return !std::ranges::all_of(each.second, &KeptSectionCommand::outcomeUnknown);
           });
}

KeptRequests KeptCommands::requests(const MemberIdentity& member) const
{
    KeptRequests requests;
    std::ranges::copy_if(m_entries, std::back_inserter(requests.entries),
                         [&](const KeptEntry& each) { return belongsTo(each, member); });
    if (const auto reversals = m_reversals.find(member); reversals != m_reversals.end()) {
        for (const auto& [entryID, kept] : reversals->second) {
            if (kept.outcomeUnknown)
                requests.reversals.push_back({entryID, kept});
        }
        std::ranges::sort(requests.reversals, {},
                          [](const auto& each) { return std::pair{each.kept.since, each.entryID}; });
    }
    if (const auto sections = m_sections.find(member); sections != m_sections.end())
        requests.sections = sections->second;
    return requests;
}

void KeptCommands::keepEntry(const MemberIdentity& member, TransactionInput input, bool outcomeUnknown,
                             const std::string& now)
{
    KeptEntry kept{.endpoint = member.endpoint,
                   .companyID = member.companyID,
                   .memberID = member.memberID,
                   .input = std::move(input),
                   .outcomeUnknown = outcomeUnknown,
                   .since = now};
    const auto same = std::ranges::find_if(m_entries, [&](const KeptEntry& each) {
        return belongsTo(each, member) && each.input.idempotencyKey == kept.input.idempotencyKey;
    });
    if (same == m_entries.end()) {
        m_entries.push_back(std::move(kept));
        return;
    }
    kept.since = same->since;
    *same = std::move(kept);
}

void KeptCommands::forgetEntry(const MemberIdentity& member, const std::string& idempotencyKey)
{
    std::erase_if(m_entries, [&](const KeptEntry& each) {
        return belongsTo(each, member) && each.input.idempotencyKey == idempotencyKey;
    });
}

void KeptCommands::settleEntry(const MemberIdentity& member, const TransactionInput& input, const Failure* failure,
                               const std::string& now)
{
    if (!failure || fateOf(*failure) == CommandFate::refused)
        forgetEntry(member, input.idempotencyKey);
    else if (fateOf(*failure) == CommandFate::unknown)
        keepEntry(member, input, true, now);
    else if (endsSession(*failure) && !entry(member, input.idempotencyKey))
        keepEntry(member, input, false, now);
}

const KeptReversal* KeptCommands::reversal(const MemberIdentity& member, const std::string& entryID) const
{
    const auto reversals = m_reversals.find(member);
    if (reversals == m_reversals.end())
        return nullptr;
    const auto found = reversals->second.find(entryID);
    return found == reversals->second.end() ? nullptr : &found->second;
}

void KeptCommands::keepReversal(const MemberIdentity& member, const std::string& entryID, Reversal reversal,
                                const std::string& now)
{
    m_reversals[member].try_emplace(entryID, KeptReversal{.reversal = std::move(reversal), .since = now});
}

void KeptCommands::settleReversal(const MemberIdentity& member, const std::string& entryID, const Failure* failure)
{
    auto& reversals = m_reversals[member];
    if (!failure) {
        reversals.erase(entryID);
        return;
    }
    auto& kept = reversals[entryID];
    const auto fate = fateOf(*failure);
    if (fate == CommandFate::undecided && kept.outcomeUnknown)
        return;
    kept.outcomeUnknown = fate == CommandFate::unknown;
    const auto* refusal = std::get_if<APIError>(failure);
    kept.refusal = kept.outcomeUnknown || !refusal ? std::nullopt : std::optional{*refusal};
}

const KeptSectionCommand* KeptCommands::section(const MemberIdentity& member) const
{
    const auto found = m_sections.find(member);
    return found == m_sections.end() || found->second.empty() ? nullptr : &found->second.front();
}

void KeptCommands::keepSection(const MemberIdentity& member, KeptSectionCommand kept)
{
    auto& all = m_sections[member];
    const auto same = std::ranges::find(all, kept.idempotencyKey(), &KeptSectionCommand::idempotencyKey);
    if (same == all.end()) {
        all.push_back(std::move(kept));
        return;
    }
    kept.since = same->since;
    *same = std::move(kept);
}

void KeptCommands::forgetSection(const MemberIdentity& member, const std::string& idempotencyKey)
{
    if (const auto found = m_sections.find(member); found != m_sections.end())
        std::erase_if(found->second, [&](const auto& each) { return each.idempotencyKey() == idempotencyKey; });
}

void KeptCommands::settleSection(const MemberIdentity& member, const SectionCommand& command, const Failure* failure,
                                 const std::string& now)
{
    KeptSectionCommand kept{.command = command, .since = now};
    if (!failure || fateOf(*failure) == CommandFate::refused) {
        forgetSection(member, kept.idempotencyKey());
    } else if (fateOf(*failure) == CommandFate::unknown) {
        kept.outcomeUnknown = true;
        keepSection(member, std::move(kept));
    } else if (endsSession(*failure)) {
        const auto& all = m_sections[member];
        if (std::ranges::find(all, kept.idempotencyKey(), &KeptSectionCommand::idempotencyKey) == all.end())
            keepSection(member, std::move(kept));
    }
}

void KeptCommands::endSession()
{
    for (auto& [member, reversals] : m_reversals)
        std::erase_if(reversals, [](const auto& each) { return !each.second.outcomeUnknown; });
}
