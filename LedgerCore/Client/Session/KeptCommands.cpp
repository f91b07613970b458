#include "LedgerCore/Client/Session/KeptCommands.h"

#include <algorithm>
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
           std::ranges::any_of(m_sections, [](const auto& each) { return each.second.outcomeUnknown; });
}

void KeptCommands::keepEntry(const MemberIdentity& member, TransactionInput input, bool outcomeUnknown)
{
    KeptEntry kept{.endpoint = member.endpoint,
                   .companyID = member.companyID,
                   .memberID = member.memberID,
                   .input = std::move(input),
                   .outcomeUnknown = outcomeUnknown};
    const auto same = std::ranges::find_if(m_entries, [&](const KeptEntry& each) {
        return belongsTo(each, member) && each.input.idempotencyKey == kept.input.idempotencyKey;
    });
    if (same == m_entries.end())
        m_entries.push_back(std::move(kept));
    else
        *same = std::move(kept);
}

void KeptCommands::forgetEntry(const MemberIdentity& member, const std::string& idempotencyKey)
{
    std::erase_if(m_entries, [&](const KeptEntry& each) {
        return belongsTo(each, member) && each.input.idempotencyKey == idempotencyKey;
    });
}

void KeptCommands::settleEntry(const MemberIdentity& member, const TransactionInput& input, const Failure* failure)
{
    if (!failure || fateOf(*failure) == CommandFate::refused)
        forgetEntry(member, input.idempotencyKey);
    else if (fateOf(*failure) == CommandFate::unknown)
        keepEntry(member, input, true);
    else if (endsSession(*failure) && !entry(member, input.idempotencyKey))
        keepEntry(member, input, false);
}

const KeptReversal* KeptCommands::reversal(const MemberIdentity& member, const std::string& entryID) const
{
    const auto reversals = m_reversals.find(member);
    if (reversals == m_reversals.end())
        return nullptr;
    const auto found = reversals->second.find(entryID);
    return found == reversals->second.end() ? nullptr : &found->second;
}

void KeptCommands::keepReversal(const MemberIdentity& member, const std::string& entryID, Reversal reversal)
{
    m_reversals[member].try_emplace(entryID, KeptReversal{.reversal = std::move(reversal)});
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
    return found == m_sections.end() ? nullptr : &found->second;
}

void KeptCommands::forgetSection(const MemberIdentity& member)
{
    m_sections.erase(member);
}

void KeptCommands::settleSection(const MemberIdentity& member, const SectionCommand& command, const Failure* failure)
{
    if (!failure || fateOf(*failure) == CommandFate::refused)
        forgetSection(member);
    else if (fateOf(*failure) == CommandFate::unknown)
        m_sections.insert_or_assign(member, KeptSectionCommand{.command = command, .outcomeUnknown = true});
    else if (endsSession(*failure))
        m_sections.try_emplace(member, KeptSectionCommand{.command = command});
}

void KeptCommands::endSession()
{
    for (auto& [member, reversals] : m_reversals)
        std::erase_if(reversals, [](const auto& each) { return !each.second.outcomeUnknown; });
}
