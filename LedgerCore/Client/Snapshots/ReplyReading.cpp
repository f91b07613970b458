#include "LedgerCore/Client/Snapshots/ReplyReading.h"

#include <deque>
#include <mutex>
#include <utility>

#include <QCoro/QCoroFuture>
#include <QFuture>
#include <QPromise>
#include <QThreadPool>

/// What a worker does: the pieces in their order, then the last step. It is at work only while there is something to
/// do, so that a slow reply keeps no thread waiting.
struct ReplyReading::Work {
    std::mutex mutex;
    std::deque<std::string> pieces;
    Judge judge; // set when no more pieces follow
    bool isRunning = false;
    EntryStream stream;
    QPromise<void> done;

    static void add(const std::shared_ptr<Work>& work, std::string piece, Judge judge)
    {
        const std::scoped_lock lock{work->mutex};
        if (!piece.empty())
            work->pieces.push_back(std::move(piece));
        work->judge = std::move(judge);
        if (!std::exchange(work->isRunning, true))
            QThreadPool::globalInstance()->start([work] { work->run(); });
    }

    void run()
    {
        while (true) {
            auto [piece, last] = next();
            if (!piece && !last)
                return;
            if (piece) {
                stream.take(*piece);
                continue;
            }
            last(std::move(stream).finish());
            done.finish();
            return;
        }
    }

private:
    std::pair<std::optional<std::string>, Judge> next()
    {
        const std::scoped_lock lock{mutex};
        if (pieces.empty()) {
            isRunning = judge != nullptr;
            return {std::nullopt, std::exchange(judge, nullptr)};
        }
        auto piece = std::move(pieces.front());
        pieces.pop_front();
        return {std::move(piece), nullptr};
    }
};

ReplyReading::ReplyReading(std::size_t quickly) : m_quickly(quickly) {}
ReplyReading::~ReplyReading() = default;

void ReplyReading::take(std::string bytes)
{
    if (!m_work) {
        m_short += bytes;
        if (m_short.size() <= m_quickly)
            return;
        m_work = std::make_shared<Work>();
        bytes = std::exchange(m_short, {});
    }
    Work::add(m_work, std::move(bytes), nullptr);
}

QCoro::Task<void> ReplyReading::finish(std::shared_ptr<ReplyReading> reading, Judge judge)
{
    const auto work = reading->m_work;
    if (!work) {
        EntryStream stream;
        stream.take(reading->m_short);
        judge(std::move(stream).finish());
        co_return;
    }
    work->done.start();
    const auto finished = work->done.future();
    Work::add(work, {}, std::move(judge));
    co_await finished;
}
