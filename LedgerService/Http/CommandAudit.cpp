#include "LedgerService/Http/CommandAudit.h"

#include <vector>

#include <fmt/core.h>

#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Storage/Rows/CompanyHistory.h"
#include "LedgerService/Storage/Rows/EntryRepository.h"
#include "LedgerService/Storage/Rows/FragmentRepository.h"

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

void CommandAudit::keep(const MemberCall& call, const Route& route, std::int64_t change)
{
    if (call.note.isRepetition)
        return;
    const auto record = recordOf(call, route);
    const auto state = CompanyHistory::state(call.connection, call.companyID).value_or(CompanyState{});
    const auto entries = EntryRepository::idsBetween(call.connection, call.companyID, change, state.lastChange);
    if (entries.empty() || call.note.before || call.note.after) {
        auto told = record;
        told.record = call.note.record ? call.note.record : namedByPath(call);
        told.before = call.note.before;
        told.after = call.note.after;
        AuditTrail::append(call.connection, call.companyID, std::move(told));
    }
    for (const auto& [sequence, id] : entries) {
        auto told = record;
        told.record = id;
        if (const auto fragment = FragmentRepository::find(call.connection, state, sequence))
            told.digest = AuditTrail::digestOf(fragment->text);
        AuditTrail::append(call.connection, call.companyID, std::move(told));
    }
}

}
