#include "LedgerService/Http/Dispatch/WorkLane.h"

#include <memory>
#include <utility>

#include <boost/asio/async_result.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace LedgerService {

namespace asio = boost::asio;

WorkLane::WorkLane(unsigned threads, Places places) : m_places(places), m_pool(threads) {}

bool WorkLane::hasPlaceFor(const std::string& client) const
{
    const auto found = m_waitingOf.find(client);
    return found == m_waitingOf.end() || (found->second < m_places.ofClient && m_waiting < m_places.ofAll);
}

void WorkLane::takePlace(const std::string& client)
{
    ++m_waitingOf[client];
    ++m_waiting;
}

void WorkLane::leavePlace(const std::string& client)
{
    --m_waiting;
    const auto found = m_waitingOf.find(client);
    if (--found->second == 0)
        m_waitingOf.erase(found);
}

/// The pool takes one step for each that waits; whose it is turns out when the step is taken.
asio::awaitable<void> WorkLane::enter(std::string client)
{
    auto initiate = [this](auto handler, std::string who) {
        auto held = std::make_shared<decltype(handler)>(std::move(handler));
        m_queue.add(std::move(who), [held] { std::move (*held)(); });
        asio::post(m_pool, [this] {
            if (const auto next = m_queue.take())
                (*next)();
        });
    };
    auto token = asio::use_awaitable;
    co_await asio::async_initiate<decltype(token), void()>(std::move(initiate), token, std::move(client));
}

void WorkLane::stop()
{
    m_pool.stop();
    m_pool.join();
}

}
