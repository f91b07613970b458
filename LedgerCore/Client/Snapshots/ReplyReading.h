#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Http/BodySink.h"
#include "LedgerCore/Client/Snapshots/EntryStream.h"

/// Reads a reply with a snapshot: a long one on a worker while it still arrives, a short one at its end.
class ReplyReading final : public BodySink {
public:
    using Judge = std::function<void(std::optional<SplitReply>)>;

    /// Longer replies than `quickly` bytes go to a worker.
    explicit ReplyReading(std::size_t quickly);
    ~ReplyReading() override;

    void take(std::string bytes) override;

    /// After the last bytes: hands what was read to `judge`, which runs where the reading did. Call it once.
    static QCoro::Task<void> finish(std::shared_ptr<ReplyReading> reading, Judge judge);

private:
    struct Work;

    std::size_t m_quickly;
    std::string m_short; // what has come of a reply that may turn out to be a short one
    std::shared_ptr<Work> m_work;
};
