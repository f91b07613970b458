#include "LedgerService/Http/Dispatch/CommandLane.h"

#include <utility>

#include <boost/asio/associated_executor.hpp>
#include <boost/asio/async_result.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/use_awaitable.hpp>

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Log.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;

/// A group ends at either limit, so that its first command does not wait long for its last.
constexpr std::size_t mostTogether = 64;
constexpr std::chrono::milliseconds longestWork{4};

Refusal tooMuchWaits()
{
    return Refusal::of(ServiceCode::serviceUnavailable, "Too much is waiting; try again.", std::chrono::seconds{1});
}

}

CommandLane::CommandLane(const Dispatcher& dispatcher, const HttpLimits& limits)
    : m_dispatcher(dispatcher), m_limits(limits), m_thread([this] { run(); })
{
}

CommandLane::~CommandLane()
{
    stop();
}

asio::awaitable<void> CommandLane::carryOut(std::shared_ptr<Command> command)
{
    auto initiate = [this](auto handler, std::shared_ptr<Command> given) {
        auto held = std::make_shared<decltype(handler)>(std::move(handler));
        add({std::move(given), [held] {
                 auto executor = asio::get_associated_executor(*held);
                 asio::post(executor, [held] { std::move (*held)(); });
             }});
    };
    auto token = asio::use_awaitable;
    co_await asio::async_initiate<decltype(token), void()>(std::move(initiate), token, std::move(command));
}

void CommandLane::add(Waiting waiting)
{
    {
        const std::lock_guard guard{m_guard};
        if (m_waiting.size() < m_limits.commandsWaiting) {
            m_waiting.push_back(std::move(waiting));
            m_changed.notify_one();
            return;
        }
    }
    waiting.command->outcome = std::unexpected(tooMuchWaits());
    waiting.resume();
}

CommandLane::Queue CommandLane::queue()
{
    const std::lock_guard guard{m_guard};
    const auto waiting = m_waiting.size() + m_underWay;
    if (waiting == 0)
        return {};
    const auto first = m_underWay > 0 ? m_groupArrived : m_waiting.front().command->request.arrived;
    return {.waiting = waiting, .longest = Steady::now() - first};
}

void CommandLane::stop()
{
    {
        const std::lock_guard guard{m_guard};
        m_stopping = true;
        m_changed.notify_one();
    }
    if (m_thread.joinable())
        m_thread.join();
    m_waiting.clear();
}

void CommandLane::run()
{
    while (awaitCommand()) {
        try {
            carryOutGroup();
        } catch (const std::exception& failure) {
            Log::failure("(commands)", failure.what());
            finish();
        }
    }
}

bool CommandLane::awaitCommand()
{
    std::unique_lock guard{m_guard};
    m_changed.wait(guard, [&] { return m_stopping || !m_waiting.empty(); });
    return !m_stopping;
}

void CommandLane::carryOutGroup()
{
    Group group;
    group.reserve(mostTogether);
    if (auto* first = takeInto(group)) {
        std::optional<Steady::time_point> end;
        m_dispatcher.carryOut(*first, [&]() -> Command* {
            const auto now = Steady::now();
            end = end.value_or(now + longestWork);
            return now < *end && group.size() < mostTogether ? takeInto(group) : nullptr;
        });
    }
    finish();
    for (auto& each : group)
        each.resume();
}

void CommandLane::begin(const Command& command)
{
    const std::lock_guard guard{m_guard};
    if (m_underWay++ == 0)
        m_groupArrived = command.request.arrived;
}

void CommandLane::finish()
{
    const std::lock_guard guard{m_guard};
    m_underWay = 0;
}

std::optional<CommandLane::Waiting> CommandLane::take()
{
    const std::lock_guard guard{m_guard};
    if (m_waiting.empty())
        return std::nullopt;
    auto waiting = std::move(m_waiting.front());
    m_waiting.pop_front();
    return waiting;
}

/// The next command that is still worth its work; null when none waits.
Command* CommandLane::takeInto(Group& group)
{
    while (auto waiting = take()) {
        auto& command = *waiting->command;
        const bool late = Steady::now() - command.request.arrived > m_limits.queue;
        if (!late) {
            begin(command);
            group.push_back(*std::move(waiting));
            return &command;
        }
        command.outcome = std::unexpected(tooMuchWaits());
        waiting->resume();
    }
    return nullptr;
}

}
