#include "LedgerService/Log.h"

#include <memory>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

namespace LedgerService {

namespace {

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
        return spdlog::level::err;
    case Log::Level::requests:
        return spdlog::level::info;
    }
    return spdlog::level::info;
}

}

void Log::start(Level level)
{
    auto made = std::make_shared<spdlog::logger>("tallyfold", std::make_shared<spdlog::sinks::stderr_sink_mt>());
    made->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %l %v");
    made->set_level(levelOf(level));
    made->flush_on(spdlog::level::info);
    logger() = std::move(made);
}

void Log::note(std::string_view words)
{
    if (const auto& to = logger())
        to->info("{}", words);
}

void Log::request(std::string_view method, std::string_view pattern, int status, std::chrono::microseconds took)
{
    if (const auto& to = logger())
        to->info("{} {} {} {} us", method, pattern, status, took.count());
}

void Log::failure(std::string_view pattern, std::string_view words)
{
    if (const auto& to = logger())
        to->error("{} failed: {}", pattern, words);
}

}
