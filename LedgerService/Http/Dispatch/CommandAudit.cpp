#include "LedgerService/Http/Dispatch/CommandAudit.h"

#include <fmt/core.h>

#include "LedgerService/Audit/AuditTrail.h"

namespace LedgerService {

namespace {

AuditRecord recordOf(const MemberCall& call, const Route& route)
{
    AuditRecord record;
    record.at = call.now;
    record.memberID = call.member.id;
    record.origin = call.request.remote;
    record.kind = fmt::format("{} {}", route.method, route.pattern);
    return record;
}

std::optional<std::string> namedByPath(const MemberCall& call)
{
    return call.parameters.empty() ? std::nullopt : std::optional{call.parameters.front()};
}

}

void CommandAudit::keep(const MemberCall& call, const Route& route)
{
    const auto& note = call.note;
    if (note.isRepetition || note.isPrivate || note.isToldElsewhere)
        return;
    const auto record = recordOf(call, route);
    if (note.entries.empty() || note.before || note.after) {
        auto told = record;
        told.record = note.record ? note.record : namedByPath(call);
        told.before = note.before;
        told.after = note.after;
        AuditTrail::append(call.connection, call.companyID, std::move(told));
    }
    for (const auto& each : note.rights) {
        auto told = record;
        told.kind = AuditKind::memberRightsChanged;
        told.record = each.memberID;
        told.before = each.before;
        told.after = each.after;
        AuditTrail::append(call.connection, call.companyID, std::move(told));
    }
    for (const auto& each : note.entries) {
        auto told = record;
        told.record = each.id;
        told.digest = each.digest;
        AuditTrail::append(call.connection, call.companyID, std::move(told));
    }
}

}
