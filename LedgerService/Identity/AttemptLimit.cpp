#include "LedgerService/Identity/AttemptLimit.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Storage/Rows/AttemptRepository.h"

namespace LedgerService {

std::optional<Refusal> AttemptLimit::whyNotNow(Connection& connection, std::string_view scope, int limit,
                                               const Service& service)
{
    const auto instant = service.clock();
    const auto now = LedgerDay::stamp(instant);
    AttemptRepository::removeEnded(connection, now);
    const int count =
        AttemptRepository::count(connection, scope, now, LedgerDay::stamp(instant + service.policy.limits.window));
    if (count <= limit)
        return std::nullopt;
    return Refusal{429, "rate_limited", "Too many attempts; try again later."};
}

}
