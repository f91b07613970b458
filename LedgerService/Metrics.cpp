#include "LedgerService/Metrics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <map>
#include <mutex>
#include <utility>

#include <fmt/core.h>
#include <sys/resource.h>
#include <unistd.h>

#include "LedgerCore/Domain/Contract.h"

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

/// Everything that is told, in the order in which it is.
struct Figure {
    std::string_view name;
    std::string_view kind;
    std::string_view label; // by which it is told apart; empty: it is one number
    std::string_view help;
};

constexpr std::string_view requests = "tallyfold_request_duration_seconds";
constexpr std::string_view processorTime = "process_cpu_seconds_total";
constexpr std::string_view residentMemory = "process_resident_memory_bytes";
constexpr std::string_view mostMemory = "tallyfold_resident_memory_max_bytes";

constexpr std::array everyFigure{
    Figure{requests, "histogram", "route, status",
           "From the arrival of a request to its reply, with the time that it waited"},
    Figure{Metrics::connections, "gauge", "state",
           "Open connections: idle, sending a request, waiting for its reply, or reading one"},
    Figure{Metrics::commandsWaiting, "gauge", "", "Commands that wait to be written, with those being written"},
    Figure{Metrics::oldestCommand, "gauge", "", "How long the first of them has waited; they are refused at 10"},
    Figure{Metrics::signInsWaiting, "gauge", "",
           "Sign-ins and new passwords under way; further ones from one client address are refused at 32"},
    Figure{Metrics::bodyBytes, "gauge", "", "What unfinished requests hold of the memory that they share"},
    Figure{Metrics::replyBytes, "gauge", "", "What unread replies hold of the memory that they share"},
    Figure{Metrics::certificateEnd, "gauge", "", "When the certificate in force expires, in seconds since 1970"},
    Figure{Metrics::databaseBytes, "gauge", "", "Size of the database's file"},
    Figure{Metrics::logBytes, "gauge", "", "Size of the log beside it; for long above 16 MiB: somebody reads for long"},
    Figure{Metrics::receiptBytes, "gauge", "", "Receipts of all companies, as they were uploaded"},
    Figure{processorTime, "counter", "", "Time of processors that the process has used"},
    Figure{residentMemory, "gauge", "", "Memory that it holds"},
    Figure{mostMemory, "gauge", "", "The most that it has held"},
};

std::string headOf(std::string_view name)
{
    const auto* const found = std::ranges::find(everyFigure, name, &Figure::name);
    require(found != everyFigure.end(), "every figure is in the table");
    return fmt::format("# HELP {0} {1}.\n# TYPE {0} {2}\n", name, found->help, found->kind);
}

double memoryNow()
{
    std::ifstream statm{"/proc/self/statm"};
    double whole = 0;
    double resident = 0;
    statm >> whole >> resident; // in pages
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

std::vector<Metrics::Gauge> ofProcess()
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    constexpr double micro = 1e-6;
    constexpr double kibi = 1024;
    const auto seconds = static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
                         micro * static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec);
    return {{processorTime, seconds},
            {residentMemory, memoryNow()},
            {mostMemory, kibi * static_cast<double>(used.ru_maxrss)}};
}

/// Bytes and instants are whole numbers, which are written out.
std::string plain(double value)
{
    constexpr double writtenOut = 1e15;
    const bool whole = std::trunc(value) == value && std::abs(value) < writtenOut;
    return whole ? fmt::format("{}", static_cast<std::int64_t>(value)) : fmt::format("{}", value);
}

void add(std::string& text, const std::vector<Metrics::Gauge>& gauges)
{
    std::string_view last;
    for (const auto& [name, value, state] : gauges) {
        if (name != std::exchange(last, name))
            text += headOf(name);
        text += state.empty() ? fmt::format("{} {}\n", name, plain(value))
                              : fmt::format("{}{{state=\"{}\"}} {}\n", name, state, plain(value));
    }
}

void addRequests(std::string& text)
{
    text += headOf(requests);
    auto& all = figures();
    const std::lock_guard guard{all.guard};
    for (const auto& [key, counts] : all.requests) {
        const auto labels = fmt::format("route=\"{}\",status=\"{}\"", key.first, key.second);
        for (std::size_t each = 0; each < bounds.size(); ++each)
            text += fmt::format("{}_bucket{{{},le=\"{}\"}} {}\n", requests, labels, bounds[each], counts.within[each]);
        text += fmt::format("{0}_bucket{{{1},le=\"+Inf\"}} {2}\n{0}_count{{{1}}} {2}\n{0}_sum{{{1}}} {3}\n", requests,
                            labels, counts.all, counts.seconds);
    }
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

std::string Metrics::text(const std::vector<Gauge>& gauges)
{
    std::string text;
    addRequests(text);
    add(text, gauges);
    add(text, ofProcess());
    return text;
}

std::string Metrics::table()
{
    std::string text = "| Figure | Kind | Labels | |\n|---|---|---|---|\n";
    for (const auto& [name, kind, label, help] : everyFigure)
        text += fmt::format("| `{}` | {} | {} | {} |\n", name, kind, label, help);
    return text;
}

}
