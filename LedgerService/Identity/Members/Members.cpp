#include "LedgerService/Identity/Members/Members.h"

#include <algorithm>
#include <string>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Access/MembershipRules.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Identity/Members/MembershipRefusal.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Companies/CategoryRepository.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"

namespace LedgerService {

std::optional<Refusal> Members::change(const CommandAct& act, std::string_view memberID, const MemberUpdate& update)
{
    if (!MemberRights::canManage(act.member)) // who that is plays no part for those who may not ask
        return MembershipRefusal::of(MembershipRules::Refusal::notManager);
    const auto members = MemberRepository::all(act.connection, act.companyID);
    const auto found = std::ranges::find(members, memberID, &Member::id);
    if (found == members.end())
        return Refusal::of(ServiceCode::notFound, "There is no such member.");
    const auto accounts = AccountRepository::all(act.connection, act.companyID);
    if (const auto refused = MembershipRules::whyNotChange(*found, update, act.member, {members, accounts}))
        return MembershipRefusal::of(*refused);
    const auto changed = MembershipRules::changed(*found, update, act.member);
    MemberRepository::write(act.connection, act.companyID, changed);
    act.tell(*found, changed);
    if (!changed.active)
        SessionRepository::revokeAll(act.connection, {act.companyID, changed.id}, act.now);
    return std::nullopt;
}

std::optional<Refusal> Members::rename(const CommandAct& act, const ProfileUpdate& update)
{
    if (!Naming::isName(update.name))
        return Refusal::of(ServiceCode::validationError, "A name is one line that says something.");
    const std::string name{TextFold::trimmed(update.name)};
    UserRepository::writeName(act.connection, act.member.userID, name);
    act.tell(ProfileUpdate{act.member.name}, ProfileUpdate{name});
    AuditRecord record;
    record.at = act.now;
    record.origin = act.origin;
    record.kind = "PATCH /v1/me/profile"; // as in the company from which it was given
    record.before = act.note.before;
    record.after = act.note.after;
    for (const auto& each : MemberRepository::memberships(act.connection, act.member.userID)) {
        auto member = MemberRepository::find(act.connection, each.companyID, each.memberID);
        if (!member || member->name == name)
            continue;
        member->name = name;
        MemberRepository::write(act.connection, each.companyID, *member);
        CompanyHistory::advance(act.connection, each.companyID); // its members see the new name
        if (each.companyID == act.companyID)
            continue;
        record.memberID = each.memberID;
        AuditTrail::append(act.connection, each.companyID, record);
    }
    return std::nullopt;
}

std::optional<Refusal> Members::select(const CommandAct& act, const CategorySelection& selection)
{
    const auto category = CategoryRepository::find(act.connection, act.companyID, selection.categoryID);
    if (!category)
        return Refusal::of(ServiceCode::notFound, "There is no such category.");
    if (selection.selected && category->archived)
        return Refusal::of(ServiceCode::categoryArchived, "An archived category is not offered.");
    auto member = act.member;
    auto& selected = member.selectedCategoryIDs;
    if (!selected)
        selected.emplace();
    const CategorySelection before{selection.categoryID,
                                   std::ranges::find(*selected, selection.categoryID) != selected->end()};
    std::erase(*selected, selection.categoryID);
    if (selection.selected)
        selected->push_back(selection.categoryID);
    MemberRepository::write(act.connection, act.companyID, member);
    act.note.record = selection.categoryID;
    act.tell(before, selection);
    return std::nullopt;
}

}
