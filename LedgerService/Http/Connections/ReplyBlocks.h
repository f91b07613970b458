#pragma once

#include <memory>
#include <optional>
#include <string>

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/steady_timer.hpp>

#include "LedgerService/Http/Dispatch/WorkLane.h"
#include "LedgerService/Http/Reply.h"

namespace LedgerService {

/// The further blocks of a long reply. Each is made in a thread that reads, while the one before it is sent if so
/// wished. It is shared with the block that is being made: the connection may be gone before that is done.
class ReplyBlocks : public std::enable_shared_from_this<ReplyBlocks> {
public:
    /// Whose reply it is: the person in whose queue its blocks wait, and the request's name in the log.
    struct Reader {
        std::string person;
        std::string requestID;
    };

    ReplyBlocks(const boost::asio::any_io_executor& executor, WorkLane& lane, Reader reader, BodyBlocks source);

    /// Begins to make the next block.
    void begin();

    /// The next block, empty at the end of the reply; nothing when it could not be made. Begins to make it if that is
    /// not done yet.
    static boost::asio::awaitable<std::optional<std::string>> next(std::shared_ptr<ReplyBlocks> self);

private:
    static boost::asio::awaitable<void> make(std::shared_ptr<ReplyBlocks> self);

    enum class State { none, underWay, made };

    WorkLane& m_lane;
    Reader m_reader;
    BodyBlocks m_source;
    boost::asio::steady_timer m_made; // ends when the block is made
    State m_state = State::none;
    std::optional<std::string> m_block;
};

}
