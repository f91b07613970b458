#include "LedgerService/Http/Connections/ReplyBlocks.h"

#include <utility>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <fmt/core.h>

#include "LedgerService/Log.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;

/// The next block, or nothing when it could not be made: what was sent is not the whole then.
std::optional<std::string> blockOf(const BodyBlocks& blocks, std::string_view requestID)
{
    try {
        return blocks();
    } catch (const std::exception& failure) {
        Log::failure(fmt::format("(reply under way) {}", requestID), DatabaseFailure::words(failure));
        return std::nullopt;
    }
}

}

ReplyBlocks::ReplyBlocks(const asio::any_io_executor& executor, WorkLane& lane, Reader reader, BodyBlocks source)
    : m_lane(lane), m_reader(std::move(reader)), m_source(std::move(source)),
      m_made(executor, asio::steady_timer::time_point::max())
{
}

void ReplyBlocks::begin()
{
    m_state = State::underWay;
    m_block.reset();
    auto self = shared_from_this();
    asio::co_spawn(m_made.get_executor(), make(self), [self](const std::exception_ptr&) {
        self->m_state = State::made; // whatever came of it: nobody waits for ever
        self->m_made.cancel();
    });
}

asio::awaitable<void> ReplyBlocks::make(std::shared_ptr<ReplyBlocks> self)
{
    co_await self->m_lane.enter(self->m_reader.person);
    auto block = blockOf(self->m_source, self->m_reader.requestID);
    co_await asio::post(asio::use_awaitable);
    self->m_block = std::move(block);
}

asio::awaitable<std::optional<std::string>> ReplyBlocks::next(std::shared_ptr<ReplyBlocks> self)
{
    if (self->m_state == State::none)
        self->begin();
    boost::system::error_code woken;
    auto token = asio::redirect_error(asio::use_awaitable, woken);
    if (self->m_state != State::made)
        co_await self->m_made.async_wait(token);
    self->m_state = State::none;
    co_return std::exchange(self->m_block, std::nullopt);
}

}
