#pragma once

#include <functional>

#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>

namespace LedgerService {

/// Taking the connections of whoever knocks.
namespace Accepting {

using Taking = std::function<boost::asio::awaitable<void>(boost::asio::ip::tcp::socket)>;

/// Has `take` done with each connection, one after the other, until the acceptor is closed. One that could not be
/// taken, and one whose taking throws, does not keep the next from being taken.
void spawn(boost::asio::ip::tcp::acceptor& acceptor, Taking take);

}

}
