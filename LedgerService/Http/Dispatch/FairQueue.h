#pragma once

#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace LedgerService {

/// What waits, in a queue for each client. The queues take turns, so that a client who asks for much at once waits for
/// itself and not before others. Used by many threads.
template <class Item>
class FairQueue {
public:
    void add(std::string client, Item item)
    {
        const std::lock_guard guard{m_guard};
        auto& queue = m_queues[client];
        if (queue.empty())
            m_turns.push_back(std::move(client));
        queue.push_back(std::move(item));
    }

    /// The first of the client whose turn it is; nothing when nobody waits.
    std::optional<Item> take()
    {
        const std::lock_guard guard{m_guard};
        if (m_turns.empty())
            return std::nullopt;
        auto client = std::move(m_turns.front());
        m_turns.pop_front();
        const auto found = m_queues.find(client);
        std::optional item{std::move(found->second.front())};
        found->second.pop_front();
        if (found->second.empty())
            m_queues.erase(found);
        else
            m_turns.push_back(std::move(client));
        return item;
    }

private:
    std::mutex m_guard;
    std::unordered_map<std::string, std::deque<Item>> m_queues; // none of them empty
    std::deque<std::string> m_turns;                            // each client who waits, once
};

}
