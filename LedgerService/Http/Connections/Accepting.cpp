#include "LedgerService/Http/Connections/Accepting.h"

#include <chrono>
#include <utility>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace LedgerService {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;

/// After a failed accept, such as too many open files, the next one is tried no sooner: it would meet the same.
constexpr std::chrono::milliseconds pauseAfterFailure{100};

asio::awaitable<void> accept(tcp::acceptor* acceptor, Accepting::Taking take)
{
    asio::steady_timer pause{acceptor->get_executor()};
    while (acceptor->is_open()) {
        boost::system::error_code failure;
        auto token = asio::redirect_error(asio::use_awaitable, failure);
        auto socket = co_await acceptor->async_accept(token);
        if (!failure) {
            co_await take(std::move(socket));
        } else if (acceptor->is_open()) {
            pause.expires_after(pauseAfterFailure);
            co_await pause.async_wait(token);
        }
    }
}

}

void Accepting::spawn(tcp::acceptor& acceptor, Taking take)
{
    auto again = [&acceptor, take](const std::exception_ptr& failed) {
        if (failed && acceptor.is_open())
            spawn(acceptor, take);
    };
    asio::co_spawn(acceptor.get_executor(), accept(&acceptor, std::move(take)), std::move(again));
}

}
