#include "LedgerService/Http/Dispatch/Dispatcher.h"

#include <chrono>
#include <exception>
#include <utility>
#include <vector>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Http/Conditions.h"
#include "LedgerService/Http/Dispatch/CommandAudit.h"
#include "LedgerService/Identity/Sessions/Authentication.h"
#include "LedgerService/Identity/Sessions/DemoCompanies.h"
#include "LedgerService/Log.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Sql/Anew.h"
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

Refusal fromWebPage()
{
    return Refusal::of(ServiceCode::forbidden, "Web pages are not served.");
}

Refusal refusalOf(const std::exception& failure, const RouteMatch& match, std::string_view requestID)
{
    const std::string_view pattern = match.route ? match.route->pattern : "";
    Log::failure(fmt::format("{} {}", pattern, requestID), DatabaseFailure::words(failure));
    if (DatabaseFailure::isBusy(failure))
        return Refusal::of(ServiceCode::serviceUnavailable, "Another program holds the database; try again.",
                           std::chrono::seconds{2});
    if (DatabaseFailure::isOutOfReach(failure))
        return Refusal::of(ServiceCode::serviceUnavailable, "The database cannot be reached; try again.",
                           std::chrono::seconds{2});
    if (DatabaseFailure::isFull(failure))
        return Refusal::of(ServiceCode::insufficientStorage, "The disk of the service is full.");
    return Refusal::of(ServiceCode::internalError, "The service could not do its work.");
}

/// What becomes of a transaction that the database has given up in favour of another.
enum class Conflicts { refused, thrown };

/// What `make` gives, or the refusal that a failure becomes.
template <class Make>
auto guarded(const RouteMatch& match, std::string_view requestID, Make make, Conflicts conflicts = Conflicts::refused)
    -> decltype(make())
{
    try {
        return make();
    } catch (const std::exception& failure) {
        if (conflicts == Conflicts::thrown && DatabaseFailure::isConflict(failure))
            throw;
        return std::unexpected(refusalOf(failure, match, requestID));
    }
}

/// Whether the company is a visitor's, and as full as strangers may make one.
bool takesNoMore(const TokenHolder& caller, const ServicePolicy& policy)
{
    return caller.demonstration && policy.demonstration == DemonstrationMode::visitors &&
           caller.lastChange >= policy.limits.visitChanges;
}

/// Until when the command waits for its turn and for other processes, both together.
Database::Instant waitsUntil(const Command& command)
{
    return command.request.arrived + Patience::whole;
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
    return {.status = 200,
            .body = std::move(body),
            .headers = {{"ETag", snapshot.tag}},
            .more = std::move(more),
            .heldBytes = snapshot.heldBytes};
}

}

/// What the member's request becomes in the caller's transaction.
Outcome Dispatcher::inTransaction(Connection& connection, const RouteMatch& match, const Request& request,
                                  const MemberWork& work) const
{
    const auto instant = m_service.clock();
    auto now = LedgerDay::stamp(instant);
    const auto caller = Authentication::signedInMember(connection, request.token, now, m_service.policy, m_known);
    if (!caller)
        return std::unexpected(caller.error());
    CommandNote note;
    const auto service = servicing(request);
    const MemberCall call{.service = service,
                          .request = request,
                          .parameters = match.parameters,
                          .connection = connection,
                          .companyID = caller->companyID,
                          .member = *caller->member,
                          .today = TimeZone::day(caller->timeZone, instant),
                          .now = std::move(now),
                          .note = note};
    const auto changed = connection.rowsChanged();
    auto made = work(call);
    const bool isChange = made && !note.isPrivate && connection.rowsChanged() != changed;
    if (isChange && takesNoMore(*caller, m_service.policy))
        return std::unexpected(
            Refusal::of(ServiceCode::rateLimited, "The demonstration takes no more changes.", DemoCompanies::visit));
    const bool isOfThisCompany = caller->demonstration || !note.isToldElsewhere; // visitors' changes are counted
    if (isChange && note.entries.empty() && isOfThisCompany)
        CompanyHistory::ensureAdvanced(connection, caller->companyID, caller->lastChange);
    if (made && match.route->isCommand())
        CommandAudit::keep(call, *match.route);
    return made;
}

std::string Dispatcher::personOf(const Request& request) const
{
    const auto holder = Authentication::known(request.token, m_known);
    return holder ? "person " + holder->member->userID : "address " + request.remote;
}

Reply Dispatcher::answer(const RouteMatch& match, Request& request) const
{
    const auto made = guarded(match, request.id, [&] { return begin(match, request); });
    return made ? replyTo(match, request.id, *made) : replyOf(made.error());
}

OpenCall Dispatcher::opened(Request& request) const
{
    return {.service = servicing(request), .request = request, .now = LedgerDay::stamp(m_service.clock())};
}

Service Dispatcher::servicing(const Request& request) const
{
    auto service = m_service;
    service.origin = request.remote;
    return service;
}

/// Everything that needs no turn to write.
Outcome Dispatcher::begin(const RouteMatch& match, Request& request) const
{
    if (!match.route)
        return unknownRoute(match);
    if (request.fromWebPage) // any page that somebody has open could otherwise use up their sign-ins
        return std::unexpected(fromWebPage());
    if (const auto* open = std::get_if<OpenHandler>(&match.route->answer))
        return (*open)(opened(request));
    const auto& reading = std::get<Reading>(match.route->answer);
    const auto loan = m_service.database.borrow();
    std::optional<decltype(reading.prepare(opened(request)))> work; // made once: it uses the body up
    return Anew::onConflict([&] {
        const Transaction transaction{*loan, Transaction::Mode::reading};
        return inTransaction(*loan, match, request, [&](const MemberCall& call) -> Outcome {
            if (!work)
                work = reading.prepare(opened(request));
            return *work ? (**work)(call) : Outcome{std::unexpected(work->error())};
        });
    });
}

bool Dispatcher::preparesAtOnce(const Command& command) const
{
    return command.match.route->lane != Lane::files && knows(command.request);
}

bool Dispatcher::knows(const Request& request) const
{
    return Authentication::known(request.token, m_known) != nullptr;
}

std::optional<Refusal> Dispatcher::whyNotSignedIn(const RouteMatch& match, const Request& request) const
{
    const auto found = guarded(match, request.id, [&]() -> std::expected<void, Refusal> {
        if (auto refusal = whyNotCaller(request))
            return std::unexpected(*std::move(refusal));
        return {};
    });
    return found ? std::nullopt : std::optional{found.error()};
}

std::optional<Reply> Dispatcher::prepare(Command& command) const
{
    auto prepared = guarded(command.match, command.request.id, [&]() -> Prepared {
        if (command.request.fromWebPage)
            return std::unexpected(fromWebPage());
        // A known token is looked at again in the transaction that its command writes in; whoever has no valid one
        // waits for no writer.
        if (auto refusal = preparesAtOnce(command) ? std::nullopt : whyNotCaller(command.request))
            return std::unexpected(*std::move(refusal));
        return std::get<Writing>(command.match.route->answer).prepare(opened(command.request));
    });
    if (!prepared)
        return replyOf(prepared.error());
    command.work = *std::move(prepared);
    return std::nullopt;
}

std::optional<Refusal> Dispatcher::whyNotCaller(const Request& request) const
{
    const auto loan = m_service.database.borrow();
    return Anew::onConflict([&] {
        const Transaction transaction{*loan, Transaction::Mode::reading};
        const auto now = LedgerDay::stamp(m_service.clock());
        const auto caller = Authentication::signedInMember(*loan, request.token, now, m_service.policy, m_known);
        return caller ? std::nullopt : std::optional{caller.error()};
    });
}

void Dispatcher::carryOut(Command& first, const std::function<Command*()>& next) const
{
    std::vector<Command*> group{&first};
    try {
        const auto loan = m_service.database.borrow();
        const auto turn = m_service.database.queueToWrite(waitsUntil(first));
        for (int tries = 1; !carryOutTogether(*loan, group, next, tries == Anew::mostTries); ++tries)
            continue;
    } catch (const std::exception& failure) {
        const auto refusal = refusalOf(failure, first.match, first.request.id);
        for (auto* command : group)
            command->outcome = std::unexpected(refusal);
    }
}

/// Carries out the group and what `next` adds to it, in one transaction. False when the database gave it up in favour
/// of others, unless this is the last try.
bool Dispatcher::carryOutTogether(Connection& connection, std::vector<Command*>& group,
                                  const std::function<Command*()>& next, bool last) const
{
    try {
        std::optional<Transaction> transaction;
        bool accepted = false;
        for (std::size_t at = 0; at < group.size(); ++at) {
            if (!transaction)
                transaction.emplace(connection, waitsUntil(*group[at]));
            group[at]->outcome = accepted ? carryOutAsPart(connection, *group[at]) : carryOut(connection, *group[at]);
            accepted = accepted || group[at]->outcome.has_value();
            if (!accepted)
                transaction.reset(); // undoes what the refused command has left
            if (at + 1 < group.size())
                continue;
            if (auto* const further = next())
                group.push_back(further);
        }
        if (transaction) // one was accepted
            transaction->commit();
        return true;
    } catch (const std::exception& failure) {
        if (last || !DatabaseFailure::isConflict(failure))
            throw;
        return false;
    }
}

/// One command of a group. Throws when the group's transaction cannot go on.
Outcome Dispatcher::carryOut(Connection& connection, const Command& command) const
{
    return guarded(
        command.match, command.request.id,
        [&] { return inTransaction(connection, command.match, command.request, command.work); }, Conflicts::thrown);
}

/// The same after others that were accepted, which stay when this one is refused.
Outcome Dispatcher::carryOutAsPart(Connection& connection, const Command& command) const
{
    Savepoint savepoint{connection};
    auto outcome = carryOut(connection, command);
    if (outcome)
        savepoint.keep();
    else
        savepoint.undo();
    return outcome;
}

bool Dispatcher::repliesWithSnapshot(const Command& command)
{
    const auto* const snapshot = command.outcome ? std::get_if<SnapshotReply>(&*command.outcome) : nullptr;
    return snapshot && (snapshot->opensSession || !Conditions::prefersMinimal(command.request));
}

Reply Dispatcher::replyTo(const Command& command) const
{
    if (!command.outcome)
        return replyOf(command.outcome.error());
    if (repliesWithSnapshot(command) || std::holds_alternative<Reply>(*command.outcome))
        return replyTo(command.match, command.request.id, *command.outcome);
    auto reply = okReply();
    reply.headers.emplace_back("Preference-Applied", "return=minimal");
    return reply;
}

Reply Dispatcher::replyTo(const RouteMatch& match, std::string_view requestID,
                          const std::variant<Reply, SnapshotReply>& made) const
{
    if (const auto* reply = std::get_if<Reply>(&made))
        return *reply;
    auto reply = guarded(match, requestID, [&]() -> std::expected<Reply, Refusal> {
        return withSnapshot(std::get<SnapshotReply>(made));
    });
    return reply ? *std::move(reply) : replyOf(reply.error());
}

Reply Dispatcher::withSnapshot(const SnapshotReply& reply) const
{
    auto answer = Anew::onConflict([&] {
        return SnapshotReader::answer(m_service.database, reply.reader.companyID, reply.reader.memberID, reply.asked);
    });
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
            .more = std::move(answer->more),
            .heldBytes = answer->heldBytes};
}

}
