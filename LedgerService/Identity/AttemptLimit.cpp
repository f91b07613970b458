#include "LedgerService/Identity/AttemptLimit.h"

#include <algorithm>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/AttemptRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

using AttemptLimit::Scope;
using Instant = std::chrono::system_clock::time_point;

std::chrono::seconds restOf(const std::string& windowEndsAt, Instant instant)
{
    const auto end = LedgerDay::parseStamp(windowEndsAt).value_or(instant);
    return std::max(std::chrono::ceil<std::chrono::seconds>(end - instant), std::chrono::seconds{1});
}

std::optional<Refusal> whyUsedUp(Connection& connection, std::span<const Scope> scopes, Instant instant)
{
    const auto now = LedgerDay::stamp(instant);
    for (const auto& scope : scopes) {
        const auto tried = AttemptRepository::current(connection, scope.name, now);
        if (tried.count >= scope.limit)
            return Refusal::of(ServiceCode::rateLimited, "Too many attempts; try again later.",
                               restOf(tried.windowEndsAt, instant));
    }
    return std::nullopt;
}

}

std::optional<Refusal> AttemptLimit::whyNotNow(const Service& service, std::span<const Scope> scopes)
{
    const auto instant = service.clock();
    const auto loan = service.database.borrow();
    if (auto refusal = Anew::onConflict([&] { return whyUsedUp(*loan, scopes, instant); }))
        return refusal;
    const auto turn = service.database.queueToWrite();
    return Anew::onConflict([&]() -> std::optional<Refusal> {
        Transaction transaction{*loan, turn.until()};
        if (auto refusal = whyUsedUp(*loan, scopes, instant)) // by others, meanwhile
            return refusal;
        const auto now = LedgerDay::stamp(instant);
        AttemptRepository::removeSomeEnded(*loan, now);
        for (const auto& scope : scopes)
            AttemptRepository::count(*loan, scope.name, now, LedgerDay::stamp(instant + scope.window));
        transaction.commit();
        return std::nullopt;
    });
}

}
