#include "LedgerService/Http/Dispatch/Answering.h"

#include <boost/asio/post.hpp>
#include <boost/asio/use_awaitable.hpp>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Http/ReplyPacking.h"
#include "LedgerService/Log.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;
using Steady = std::chrono::steady_clock;

/// A body up to this size is understood on the network thread.
constexpr std::size_t quickBodyBytes = std::size_t{16} * 1024;
constexpr int tooManyRequests = 429;
constexpr std::string_view wholeReplies = "a whole answer and the last step of one give a reply";

std::string_view patternOf(const RouteMatch& match)
{
    return match.route ? match.route->pattern : "(no route)";
}

/// Whether the reply to what was carried out is made from a snapshot, or packed.
bool takesAWhileToReply(const Command& command)
{
    const auto* const made = command.outcome ? std::get_if<Reply>(&*command.outcome) : nullptr;
    return Dispatcher::repliesWithSnapshot(command) || (made && ReplyPacking::packs(*made, command.request.coding));
}

}

/// Takes a step, which may block, unless the request has waited for too long. Never throws: the thread that it runs on
/// belongs to all.
std::optional<Reply> Answering::take(const Step& step, const RouteMatch& match, const Request& request,
                                     Steady::duration queue)
{
    try {
        const bool late = Steady::now() - request.arrived > queue;
        auto reply = late ? replyOf(Refusal::of(ServiceCode::serviceUnavailable, "Too much is waiting; try again.",
                                                std::chrono::seconds{1}))
                          : step();
        if (reply)
            Log::request(request.id, request.method, patternOf(match), reply->status,
                         std::chrono::duration_cast<std::chrono::microseconds>(Steady::now() - request.arrived));
        return reply;
    } catch (...) {
        return Reply{.status = 500, .body = {}};
    }
}

WorkLane* Answering::laneOf(const RouteMatch& match, const Request& request) const
{
    if (!match.route || match.route->lane == Lane::immediate)
        return nullptr;
    if (match.route->lane == Lane::signIn)
        return &m_lanes.signIns;
    if (match.route->lane == Lane::mail)
        return &m_lanes.mails;
    return request.onlyReads ? &m_lanes.readers : &m_lanes.writers;
}

asio::awaitable<std::optional<Refusal>> Answering::whyNotSignedIn(RouteMatch match, Request request,
                                                                  std::string person) const
{
    if (m_dispatcher.knows(request))
        co_return std::nullopt;
    co_await m_lanes.readers.enter(std::move(person));
    auto refusal = m_dispatcher.whyNotSignedIn(match, request);
    co_await asio::post(asio::use_awaitable);
    co_return refusal;
}

asio::awaitable<Reply> Answering::reply(RouteMatch match, Request request, std::string person) const
{
    if (match.route && match.route->isCommand()) {
        auto command = std::make_shared<Command>(Command{std::move(match), std::move(request)});
        co_return co_await replyToCommand(std::move(command), std::move(person));
    }
    const Step whole = [&] { return ReplyPacking::packed(m_dispatcher.answer(match, request), request.coding); };
    const auto queue = m_limits.queue;
    auto* const lane = laneOf(match, request);
    if (!lane)
        co_return promised(take(whole, match, request, queue), wholeReplies);
    if (!lane->hasPlaceFor(person)) {
        Log::request(request.id, request.method, patternOf(match), tooManyRequests, {});
        co_return replyOf(Refusal::of(ServiceCode::rateLimited, "Too many sign in from here at this moment; try again.",
                                      std::chrono::seconds{2}));
    }
    lane->takePlace(person);
    co_await lane->enter(person);
    auto reply = take(whole, match, request, queue);
    co_await asio::post(asio::use_awaitable); // and back, past what still queues for the lane
    lane->leavePlace(person);
    co_return promised(std::move(reply), wholeReplies);
}

/// Commands take turns to write. What needs no turn is done before and after, off the thread that writes.
asio::awaitable<Reply> Answering::replyToCommand(std::shared_ptr<Command> command, std::string person) const
{
    const auto& [match, request, work, outcome] = *command;
    const Step beginning = [&] { return m_dispatcher.prepare(*command); };
    const Step ending = [&] { return ReplyPacking::packed(m_dispatcher.replyTo(*command), request.coding); };
    const bool quick = request.body.size() <= quickBodyBytes && m_dispatcher.preparesAtOnce(*command);
    auto& first = match.route->lane == Lane::files ? m_lanes.files : m_lanes.readers;
    if (!quick)
        co_await first.enter(person);
    auto reply = take(beginning, match, request, m_limits.queue);
    bool away = !quick;
    if (!reply) {
        co_await m_commands.carryOut(command);
        away = takesAWhileToReply(*command);
        if (away)
            co_await m_lanes.readers.enter(person);
        reply = take(ending, match, request, Steady::duration::max());
    }
    if (away)
        co_await asio::post(asio::use_awaitable);
    co_return promised(std::move(reply), wholeReplies);
}

}
