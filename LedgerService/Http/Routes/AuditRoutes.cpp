#include <array>
#include <charconv>
#include <utility>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Access/AuditDisclosure.h"
#include "LedgerService/Audit/AuditText.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Http/Routes/QueryText.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"

namespace LedgerService {

namespace {

constexpr int mostAtOnce = 500;

/// A whole number from 1 on; nothing for other texts.
template <class Number>
std::optional<Number> numberOf(const std::string& text)
{
    Number number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = failure == std::errc{} && end == text.data() + text.size() && number > 0;
    return whole ? std::optional{number} : std::nullopt;
}

std::optional<AuditFilter> filterOf(std::string_view query)
{
    auto fields = QueryText::fieldsOf(query);
    if (!fields)
        return std::nullopt;
    AuditFilter filter{.memberID = (*fields)["person"],
                       .kind = (*fields)["kind"],
                       .record = (*fields)["record"],
                       .day = (*fields)["day"]};
    if (!filter.day.empty() && !LedgerDay::isValid(filter.day))
        return std::nullopt;
    if (const auto& text = (*fields)["below"]; !text.empty()) {
        const auto number = numberOf<std::int64_t>(text);
        if (!number)
            return std::nullopt;
        filter.below = *number;
    }
    if (const auto& text = (*fields)["limit"]; !text.empty()) {
        const auto number = numberOf<int>(text);
        if (!number || *number > mostAtOnce)
            return std::nullopt;
        filter.limit = *number;
    }
    return filter;
}

Outcome audit(const MemberCall& call)
{
    if (!MemberRights::canReadAuditTrail(call.member))
        return std::unexpected(Refusal::of(ServiceCode::forbidden, "The audit trail is for owners."));
    const auto filter = filterOf(call.request.query);
    if (!filter)
        return std::unexpected(Refusal::of(ServiceCode::validationError, "The query is not one of this path."));
    auto page = AuditTrail::page(call.connection, call.companyID, *filter);
    page.records = AuditDisclosure{call.connection, call.companyID, call.member}.of(std::move(page.records));
    return Reply{.body = AuditText::of(page)};
}

Prepared prepareAudit(const OpenCall&)
{
    return audit;
}

constexpr std::array routes{
    Route{"GET", "/v1/audit", Reading{prepareAudit}},
};

}

std::span<const Route> RouteFamilies::audit()
{
    return routes;
}

}
