#include "LedgerService/Http/Dispatcher.h"

#include <exception>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Identity/Authentication.h"
#include "LedgerService/Log.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

Outcome unknownRoute(const RouteMatch& match)
{
    if (match.allow.empty())
        return std::unexpected(Refusal{404, "not_found", "There is nothing at this path."});
    const Refusal refusal{405, "method_not_allowed", "The path does not know this method."};
    return Reply{.status = refusal.status, .body = errorBody(refusal), .headers = {{"Allow", match.allow}}};
}

}

Reply Dispatcher::answer(const RouteMatch& match, const Request& request) const
{
    try {
        const auto outcome = outcomeOf(match, request);
        if (!outcome)
            return replyOf(outcome.error());
        if (const auto* reply = std::get_if<Reply>(&*outcome))
            return *reply;
        return withSnapshot(std::get<SnapshotReply>(*outcome));
    } catch (const std::exception& failure) {
        Log::failure(match.route ? match.route->pattern : "", DatabaseFailure::words(failure));
        if (DatabaseFailure::isBusy(failure))
            return replyOf({503, "service_unavailable", "Another program holds the database; try again."});
        return replyOf({500, "internal_error", "The service could not do its work."});
    }
}

Outcome Dispatcher::outcomeOf(const RouteMatch& match, const Request& request) const
{
    if (!match.route)
        return unknownRoute(match);
    if (request.fromWebPage) // any page that somebody has open could otherwise use up their sign-ins
        return std::unexpected(Refusal{403, "forbidden", "Web pages are not served."});
    const auto& answer = match.route->answer;
    if (const auto* open = std::get_if<OpenHandler>(&answer))
        return openOutcome(*open, request);
    if (const auto* reading = std::get_if<Reading>(&answer))
        return memberOutcome(match, reading->handler, Transaction::Mode::reading, request);
    return memberOutcome(match, std::get<Writing>(answer).handler, Transaction::Mode::writing, request);
}

Outcome Dispatcher::openOutcome(OpenHandler handler, const Request& request) const
{
    return handler({.service = m_service, .request = request, .now = LedgerDay::stamp(m_service.clock())});
}

Outcome Dispatcher::memberOutcome(const RouteMatch& match, MemberHandler handler, Transaction::Mode mode,
                                  const Request& request) const
{
    const auto loan = m_service.database.borrow();
    const auto turn = mode == Transaction::Mode::writing ? m_service.database.queueToWrite() : Database::Turn{};
    Transaction transaction{*loan, mode};
    const auto instant = m_service.clock();
    auto now = LedgerDay::stamp(instant);
    const auto signedIn = Authentication::signedInMember(*loan, request.token, now, m_service.policy);
    if (!signedIn)
        return std::unexpected(signedIn.error());
    auto outcome = handler({.service = m_service,
                            .request = request,
                            .parameters = match.parameters,
                            .connection = *loan,
                            .companyID = signedIn->companyID,
                            .member = signedIn->member,
                            .today = LedgerDay::localGregorian().day(instant),
                            .now = std::move(now)});
    if (outcome)
        transaction.commit();
    return outcome;
}

Reply Dispatcher::withSnapshot(const SnapshotReply& reply) const
{
    const auto loan = m_service.database.borrow();
    const Transaction transaction{*loan, Transaction::Mode::reading};
    const auto snapshot = SnapshotReader::read(*loan, reply.reader.companyID, reply.reader.memberID);
    if (!snapshot)
        return replyOf({404, "not_found", "The company is gone."});
    if (!reply.beside)
        return {.status = 200, .body = Json::encode(*snapshot)};
    std::string body = "{" + Json::encode(reply.beside->first) + ":" + Json::encode(reply.beside->second);
    body += ",\"snapshot\":";
    body += Json::encode(*snapshot);
    body += '}';
    return {.status = 200, .body = std::move(body)};
}

}
