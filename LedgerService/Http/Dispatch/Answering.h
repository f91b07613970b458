#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <boost/asio/awaitable.hpp>

#include "LedgerService/Http/Dispatch/CommandLane.h"
#include "LedgerService/Http/Dispatch/Dispatcher.h"
#include "LedgerService/Http/Dispatch/WorkLane.h"
#include "LedgerService/Http/HttpLimits.h"

namespace LedgerService {

/// Has requests answered without keeping the network thread: what may block is done on the lanes' threads, each request
/// when it is its person's turn.
class Answering {
public:
    Answering(const Dispatcher& dispatcher, WorkLanes& lanes, CommandLane& commands, const HttpLimits& limits)
        : m_dispatcher(dispatcher), m_lanes(lanes), m_commands(commands), m_limits(limits)
    {
    }

    /// Why the sender of a request whose body is still to come is nobody to take a large one from. Begins and returns
    /// on the coroutine's own executor.
    [[nodiscard]] boost::asio::awaitable<std::optional<Refusal>> whyNotSignedIn(RouteMatch match, Request request,
                                                                                std::string person) const;

    /// The reply to a request that arrived whole. Begins and returns on the coroutine's own executor. `person` is the
    /// one in whose queue it waits.
    [[nodiscard]] boost::asio::awaitable<Reply> reply(RouteMatch match, Request request, std::string person) const;

private:
    /// A part of answering a request; nothing when a further part has to follow.
    using Step = std::function<std::optional<Reply>()>;

    [[nodiscard]] WorkLane* laneOf(const RouteMatch& match, const Request& request) const;
    [[nodiscard]] boost::asio::awaitable<Reply> replyToCommand(std::shared_ptr<Command> command,
                                                               std::string person) const;
    static std::optional<Reply> take(const Step& step, const RouteMatch& match, const Request& request,
                                     std::chrono::steady_clock::duration queue);

    const Dispatcher& m_dispatcher;
    WorkLanes& m_lanes;
    CommandLane& m_commands;
    const HttpLimits& m_limits;
};

}
