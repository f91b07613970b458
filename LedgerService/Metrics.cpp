#include "LedgerService/Metrics.h"

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

#include <fmt/core.h>
#include <sys/resource.h>

namespace LedgerService {

namespace {

/// Seconds up to which answers are counted together.
constexpr std::array<double, 9> bounds{0.001, 0.0025, 0.005, 0.01, 0.025, 0.1, 0.5, 2.5, 10};

struct Counts {
    std::array<std::uint64_t, bounds.size()> within{};
    std::uint64_t all = 0;
    double seconds = 0;
};

struct Figures {
    std::mutex guard;
    std::map<std::pair<std::string, int>, Counts> requests; // by route and status: there are few of both
};

Figures& figures()
{
    static Figures all;
    return all;
}

void addProcess(std::string& text)
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    constexpr double micro = 1e-6;
    const auto seconds = static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
                         micro * static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec);
    text += fmt::format("# TYPE process_cpu_seconds_total counter\nprocess_cpu_seconds_total {}\n"
                        "# TYPE tallyfold_resident_bytes_highest gauge\ntallyfold_resident_bytes_highest {}\n",
                        seconds, used.ru_maxrss * 1024);
}

}

void Metrics::request(std::string_view pattern, int status, std::chrono::microseconds took)
{
    const auto seconds = std::chrono::duration<double>{took}.count();
    auto& all = figures();
    const std::lock_guard guard{all.guard};
    auto& counts = all.requests[{std::string{pattern}, status}];
    for (std::size_t each = 0; each < bounds.size(); ++each)
        counts.within[each] += seconds <= bounds[each] ? 1U : 0U;
    counts.all += 1;
    counts.seconds += seconds;
}

std::string Metrics::text()
{
    std::string text =
        "# HELP tallyfold_request_seconds From the arrival of a request to its reply, with the time that it waited.\n"
        "# TYPE tallyfold_request_seconds histogram\n";
    auto& all = figures();
    {
        const std::lock_guard guard{all.guard};
        for (const auto& [key, counts] : all.requests) {
            const auto labels = fmt::format("route=\"{}\",status=\"{}\"", key.first, key.second);
            for (std::size_t each = 0; each < bounds.size(); ++each)
                text += fmt::format("tallyfold_request_seconds_bucket{{{},le=\"{}\"}} {}\n", labels, bounds[each],
                                    counts.within[each]);
            text +=
                fmt::format("tallyfold_request_seconds_bucket{{{0},le=\"+Inf\"}} {1}\n"
                            "tallyfold_request_seconds_count{{{0}}} {1}\ntallyfold_request_seconds_sum{{{0}}} {2}\n",
                            labels, counts.all, counts.seconds);
        }
    }
    addProcess(text);
    return text;
}

}
