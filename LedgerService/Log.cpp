#include "LedgerService/Log.h"

#include <memory>
#include <mutex>

#include <spdlog/sinks/base_sink.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

#include "LedgerService/LogWriter.h"
#include "LedgerService/Metrics.h"

namespace LedgerService {

namespace {

/// Hands lines to the writer's thread.
class WriterSink final : public spdlog::sinks::base_sink<std::mutex> {
protected:
    void sink_it_(const spdlog::details::log_msg& message) override
    {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        m_writer.add({line.data(), line.size()});
    }
    void flush_() override {}

private:
    LogWriter m_writer{STDERR_FILENO};
};

std::shared_ptr<spdlog::logger>& logger()
{
    static std::shared_ptr<spdlog::logger> shared;
    return shared;
}

spdlog::level::level_enum levelOf(Log::Level level)
{
    switch (level) {
    case Log::Level::quiet:
        return spdlog::level::off;
    case Log::Level::failures:
        return spdlog::level::warn;
    case Log::Level::requests:
        return spdlog::level::info;
    }
    return spdlog::level::info;
}

}

void Log::start(Level level)
{
    auto made = std::make_shared<spdlog::logger>("tallyfold", std::make_shared<WriterSink>());
    made->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %l %v");
    made->set_level(levelOf(level));
    logger() = std::move(made);
}

void Log::finish()
{
    logger().reset();
}

void Log::note(std::string_view words)
{
    if (const auto& to = logger())
        to->info("{}", words);
}

void Log::warning(std::string_view words)
{
    if (const auto& to = logger())
        to->warn("{}", words);
}

void Log::request(std::string_view id, std::string_view method, std::string_view pattern, int status,
                  std::chrono::microseconds took)
{
    Metrics::request(pattern, status, took);
    if (const auto& to = logger())
        to->info("{} {} {} {} us {}", method, pattern, status, took.count(), id);
}

void Log::failure(std::string_view pattern, std::string_view words)
{
    if (const auto& to = logger())
        to->error("{} failed: {}", pattern, words);
}

}
