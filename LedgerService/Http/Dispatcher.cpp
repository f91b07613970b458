#include "LedgerService/Http/Dispatcher.h"

#include <exception>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Http/Conditions.h"
#include "LedgerService/Identity/Authentication.h"
#include "LedgerService/Log.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/CompanyHistory.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

Outcome unknownRoute(const RouteMatch& match)
{
    if (match.allow.empty())
        return std::unexpected(Refusal{404, ServiceCode::notFound, "There is nothing at this path."});
    const Refusal refusal{405, ServiceCode::methodNotAllowed, "The path does not know this method."};
    return Reply{.status = refusal.status, .body = errorBody(refusal), .headers = {{"Allow", match.allow}}};
}

/// {"token":"…","snapshot":{…}}, the snapshot in blocks.
Reply besideSnapshot(const std::pair<std::string, std::string>& beside, SnapshotAnswer snapshot)
{
    auto body = "{" + Json::encode(beside.first) + ":" + Json::encode(beside.second) + ",\"snapshot\":";
    body += snapshot.text;
    auto more = [blocks = std::move(snapshot.more), closed = false]() mutable -> std::string {
        auto block = blocks();
        return !block.empty() || std::exchange(closed, true) ? std::move(block) : "}";
    };
    return {.status = 200, .body = std::move(body), .headers = {{"ETag", snapshot.tag}}, .more = std::move(more)};
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
        const auto& snapshot = std::get<SnapshotReply>(*outcome);
        const bool recorded = match.route && std::holds_alternative<Writing>(match.route->answer);
        if (recorded && Conditions::prefersMinimal(request))
            return {.status = 200, .body = R"({"ok":true})", .headers = {{"Preference-Applied", "return=minimal"}}};
        return withSnapshot(snapshot);
    } catch (const std::exception& failure) {
        Log::failure(match.route ? match.route->pattern : "", DatabaseFailure::words(failure));
        if (DatabaseFailure::isBusy(failure))
            return replyOf({503, ServiceCode::serviceUnavailable, "Another program holds the database; try again."});
        return replyOf({500, ServiceCode::internalError, "The service could not do its work."});
    }
}

Outcome Dispatcher::outcomeOf(const RouteMatch& match, const Request& request) const
{
    if (!match.route)
        return unknownRoute(match);
    if (request.fromWebPage) // any page that somebody has open could otherwise use up their sign-ins
        return std::unexpected(Refusal{403, ServiceCode::forbidden, "Web pages are not served."});
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
    const auto before = mode == Transaction::Mode::writing
                            ? CompanyHistory::state(*loan, signedIn->companyID).value_or(CompanyState{}).lastChange
                            : 0;
    auto outcome = handler({.service = m_service,
                            .request = request,
                            .parameters = match.parameters,
                            .connection = *loan,
                            .companyID = signedIn->companyID,
                            .member = signedIn->member,
                            .today = LedgerDay::localGregorian().day(instant),
                            .now = std::move(now)});
    if (!outcome)
        return outcome;
    if (mode == Transaction::Mode::writing)
        CompanyHistory::ensureAdvanced(*loan, signedIn->companyID, before);
    transaction.commit();
    return outcome;
}

Reply Dispatcher::withSnapshot(const SnapshotReply& reply) const
{
    auto answer =
        SnapshotReader::answer(m_service.database, reply.reader.companyID, reply.reader.memberID, reply.asked);
    if (!answer)
        return replyOf({404, ServiceCode::notFound, "The company is gone."});
    using enum SnapshotAnswer::Kind;
    switch (answer->kind) {
    case unchanged:
        return {.status = 304, .body = {}, .headers = {{"ETag", answer->tag}}};
    case delta:
        return {.status = 226,
                .body = std::move(answer->text),
                .headers = {{"ETag", answer->tag}, {"IM", "entries"}, {"Delta-Base", answer->base}}};
    case whole:
        break;
    }
    if (reply.beside)
        return besideSnapshot(*reply.beside, *std::move(answer));
    return {.status = 200,
            .body = std::move(answer->text),
            .headers = {{"ETag", answer->tag}},
            .more = std::move(answer->more)};
}

}
