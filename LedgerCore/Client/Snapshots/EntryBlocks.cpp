#include "LedgerCore/Client/Snapshots/EntryBlocks.h"

#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

#include <QThreadPool>

#include "LedgerCore/Domain/Json/Json.h"

namespace {

constexpr std::size_t worthAWorker = 2; // blocks that wait
constexpr std::size_t manyWaiting = 8;  // their text takes more than a megabyte

}

struct EntryBlocks::Work {
    struct Block {
        std::string text;
        std::size_t count;
        std::vector<LedgerTransaction> entries = {};
    };

    std::mutex mutex;
    std::condition_variable decoded;
    std::vector<Block> blocks = {};
    std::vector<std::string> spare = {}; // texts whose room can be used again
    std::size_t next = 0;                // that nobody has begun to decode
    std::size_t underWay = 0;            // begun and not ended
    bool hasWorker = false;
    bool isSound = true;

    /// Decodes the first block that waits. False when none does, or when one of them was refused already.
    bool decodeNext()
    {
        std::unique_lock lock{mutex};
        if (!isSound || next == blocks.size())
            return false;
        const auto at = next++;
        auto block = std::move(blocks[at]); // the list of them grows meanwhile
        ++underWay;
        lock.unlock();
        block.entries.reserve(block.count); // growing would move every entry twice
        const bool isList = !Json::viewInto(block.entries, block.text);
        block.text.clear();
        lock.lock();
        spare.push_back(std::move(block.text));
        blocks[at] = std::move(block);
        isSound = isSound && isList;
        --underWay;
        decoded.notify_all();
        return true;
    }

    /// Gives how many blocks wait.
    std::size_t take(std::string& text, std::size_t count)
    {
        const std::scoped_lock lock{mutex};
        blocks.push_back({.text = std::move(text), .count = count});
        text = spare.empty() ? std::string{} : std::move(spare.back());
        if (!spare.empty())
            spare.pop_back();
        return blocks.size() - next;
    }

    void callWorker(const std::shared_ptr<Work>& self)
    {
        const std::scoped_lock lock{mutex};
        if (std::exchange(hasWorker, true))
            return;
        QThreadPool::globalInstance()->start([self] {
            while (self->decodeNext()) {
            }
            const std::scoped_lock ending{self->mutex};
            self->hasWorker = false;
        });
    }
};

EntryBlocks::EntryBlocks() : m_work(std::make_shared<Work>()) {}

/// Whoever is still decoding holds what it needs, and begins nothing more.
EntryBlocks::~EntryBlocks()
{
    const std::scoped_lock lock{m_work->mutex};
    m_work->isSound = false;
}

bool EntryBlocks::add(std::string& text, std::size_t entries)
{
    const auto waiting = m_work->take(text, entries);
    if (waiting >= worthAWorker)
        m_work->callWorker(m_work);
    if (waiting > manyWaiting)
        m_work->decodeNext();
    const std::scoped_lock lock{m_work->mutex};
    return m_work->isSound;
}

std::optional<EntryList> EntryBlocks::finish()
{
    while (m_work->decodeNext()) {
    }
    std::unique_lock lock{m_work->mutex};
    m_work->decoded.wait(lock, [&] { return m_work->underWay == 0; });
    if (!m_work->isSound)
        return std::nullopt;
    EntryList entries;
    for (auto& block : std::exchange(m_work->blocks, {}))
        entries.append(std::move(block.entries));
    m_work->next = 0;
    return entries;
}
