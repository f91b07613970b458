#include "LedgerService/Http/Dispatcher.h"

#include <exception>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Http/CommandAudit.h"
#include "LedgerService/Http/Conditions.h"
#include "LedgerService/Identity/Authentication.h"
#include "LedgerService/Log.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/CompanyHistory.h"
#include "LedgerService/Storage/Rows/CompanyRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Transaction.h"
#include "LedgerService/TimeZone.h"

namespace LedgerService {

namespace {

Outcome unknownRoute(const RouteMatch& match)
{
    if (match.allow.empty())
        return std::unexpected(Refusal::of(ServiceCode::notFound, "There is nothing at this path."));
    auto reply = replyOf(Refusal::of(ServiceCode::methodNotAllowed, "The path does not know this method."));
    reply.headers.emplace_back("Allow", match.allow);
    return reply;
}

Outcome acknowledged(const MemberCall&)
{
    return okReply();
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

/// What the member's request becomes in the caller's transaction.
Outcome Dispatcher::inTransaction(Connection& connection, const RouteMatch& match, const Request& request,
                                  const MemberWork& work) const
{
    const auto instant = m_service.clock();
    auto now = LedgerDay::stamp(instant);
    const auto signedIn = Authentication::signedInMember(connection, request.token, now, m_service.policy);
    if (!signedIn)
        return std::unexpected(signedIn.error());
    CommandNote note;
    return work({.service = m_service,
                 .request = request,
                 .parameters = match.parameters,
                 .connection = connection,
                 .companyID = signedIn->companyID,
                 .member = signedIn->member,
                 .today = TimeZone::day(CompanyRepository::timeZone(connection, signedIn->companyID), instant),
                 .now = std::move(now),
                 .note = note});
}

Reply Dispatcher::answer(const RouteMatch& match, Request& request) const
{
    MemberWork left;
    auto reply = prepare(match, request, left);
    return reply ? *std::move(reply) : carryOut(match, request, left);
}

std::optional<Reply> Dispatcher::prepare(const RouteMatch& match, Request& request, MemberWork& left) const
{
    auto reply = guarded(match, [&] {
        const auto outcome = begin(match, request, left);
        return outcome ? replyTo(match, request, *outcome) : replyOf(outcome.error());
    });
    return left ? std::nullopt : std::optional{std::move(reply)};
}

Reply Dispatcher::carryOut(const RouteMatch& match, const Request& request, const MemberWork& work) const
{
    return guarded(match, [&] {
        const auto outcome = write(match, request, work);
        return outcome ? replyTo(match, request, *outcome) : replyOf(outcome.error());
    });
}

Reply Dispatcher::guarded(const RouteMatch& match, const std::function<Reply()>& make)
{
    try {
        return make();
    } catch (const std::exception& failure) {
        Log::failure(match.route ? match.route->pattern : "", DatabaseFailure::words(failure));
        if (DatabaseFailure::isBusy(failure))
            return replyOf(
                Refusal::of(ServiceCode::serviceUnavailable, "Another program holds the database; try again."));
        return replyOf(Refusal::of(ServiceCode::internalError, "The service could not do its work."));
    }
}

OpenCall Dispatcher::opened(Request& request) const
{
    OpenCall call{.service = m_service, .request = request, .now = LedgerDay::stamp(m_service.clock())};
    call.service.origin = request.remote;
    return call;
}

/// Everything that needs no writing; `work` is set when a command is left to be carried out.
Outcome Dispatcher::begin(const RouteMatch& match, Request& request, MemberWork& work) const
{
    if (!match.route)
        return unknownRoute(match);
    if (request.fromWebPage) // any page that somebody has open could otherwise use up their sign-ins
        return std::unexpected(Refusal::of(ServiceCode::forbidden, "Web pages are not served."));
    const auto& answer = match.route->answer;
    if (const auto* open = std::get_if<OpenHandler>(&answer))
        return (*open)(opened(request));
    if (const auto* reading = std::get_if<Reading>(&answer))
        return read(match, request, *reading);
    auto outcome = read(match, request, Reading{[](const OpenCall&) -> Prepared { return acknowledged; }});
    if (!outcome) // whoever has no valid token waits for no writer
        return outcome;
    auto prepared = std::get<Writing>(answer).prepare(opened(request));
    if (!prepared)
        return std::unexpected(std::move(prepared.error()));
    work = *std::move(prepared);
    return outcome;
}

Outcome Dispatcher::read(const RouteMatch& match, Request& request, const Reading& reading) const
{
    const auto loan = m_service.database.borrow();
    const Transaction transaction{*loan, Transaction::Mode::reading};
    return inTransaction(*loan, match, request, [&](const MemberCall& call) -> Outcome {
        const auto work = reading.prepare(opened(request));
        if (!work)
            return std::unexpected(work.error());
        return (*work)(call);
    });
}

Outcome Dispatcher::write(const RouteMatch& match, const Request& request, const MemberWork& work) const
{
    const auto loan = m_service.database.borrow();
    const auto turn = m_service.database.queueToWrite(request.arrived + Database::patience);
    Transaction transaction{*loan, Transaction::Mode::writing};
    auto outcome = inTransaction(*loan, match, request, [&](const MemberCall& call) {
        const auto before = CompanyHistory::state(call.connection, call.companyID).value_or(CompanyState{}).lastChange;
        auto made = work(call);
        if (made)
            CompanyHistory::ensureAdvanced(call.connection, call.companyID, before);
        if (made)
            CommandAudit::keep(call, *match.route, before);
        return made;
    });
    if (outcome)
        transaction.commit();
    return outcome;
}

Reply Dispatcher::replyTo(const RouteMatch& match, const Request& request,
                          const std::variant<Reply, SnapshotReply>& made) const
{
    if (const auto* reply = std::get_if<Reply>(&made))
        return *reply;
    const bool command = match.route->isCommand();
    if (!command || std::get<SnapshotReply>(made).opensSession || !Conditions::prefersMinimal(request))
        return withSnapshot(std::get<SnapshotReply>(made));
    auto reply = okReply();
    reply.headers.emplace_back("Preference-Applied", "return=minimal");
    return reply;
}

Reply Dispatcher::withSnapshot(const SnapshotReply& reply) const
{
    auto answer =
        SnapshotReader::answer(m_service.database, reply.reader.companyID, reply.reader.memberID, reply.asked);
    if (!answer)
        return replyOf(Refusal::of(ServiceCode::notFound, "The company is gone."));
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
