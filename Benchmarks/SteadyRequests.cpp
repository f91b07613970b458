#include "Benchmarks/SteadyRequests.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <vector>

#include <fmt/core.h>

#include "Benchmarks/WholeReply.h"
#include "LedgerService/testing/HttpClient.h"
#include "LedgerService/testing/ServiceProcess.h"

using namespace LedgerService;

namespace {

constexpr std::size_t clients = 8;
/// Requests after which the memory is looked at.
constexpr std::array<std::size_t, 4> marks{1'000, 25'000, 50'000, 100'000};

/// Asks in turns until `until` requests were made by all clients together.
void askUntil(std::uint16_t port, const std::string& token, const std::string& tag, std::atomic<std::size_t>& made,
              std::size_t until)
{
    constexpr std::array<std::pair<std::string_view, int>, 4> turns{
        {{"/v1/snapshot", 304}, {"/v1/me/companies", 200}, {"/v1/audit?limit=20", 0}, {"/v1/nowhere", 404}}};
    HttpClient client{port};
    const auto held = fmt::format("If-None-Match: {}\r\n", tag);
    for (auto number = made.fetch_add(1); number < until; number = made.fetch_add(1)) {
        const auto& [path, status] = turns[number % turns.size()];
        const auto answer = client.send("GET", std::string{path}, token, "", held);
        if (answer.status >= 500 || (status != 0 && answer.status != status))
            throw std::runtime_error(fmt::format("{} was answered with {}", path, answer.status));
    }
    made.fetch_sub(1); // what was not asked for any more
}

void together(std::size_t count, const auto& work)
{
    std::vector<std::jthread> threads;
    threads.reserve(count);
    for (std::size_t each = 0; each < count; ++each)
        threads.emplace_back(work);
}

}

void SteadyRequests::measureMemory(const ServiceProcess& service, const std::string& token)
{
    const auto tag = HttpClient{service.port()}.send("GET", "/v1/snapshot", token).header("etag");
    std::atomic<std::size_t> made = 0;
    std::string line;
    for (const auto mark : marks) {
        together(clients, [&] { askUntil(service.port(), token, tag, made, mark); });
        line += fmt::format("{}{} MiB after {}", line.empty() ? "" : ", ", service.memory().now >> 20U, mark);
    }
    fmt::print("{:<44} {}\n", "memory in the course of requests", line);
}

void SteadyRequests::measureSnapshots(std::uint16_t port, const std::string& token, int seconds)
{
    const std::size_t readers = std::max(1U, std::thread::hardware_concurrency());
    const auto begun = std::chrono::steady_clock::now();
    const auto end = begun + std::chrono::seconds{seconds};
    std::atomic<std::size_t> read = 0;
    together(readers, [&] {
        WholeReply reply{port};
        while (std::chrono::steady_clock::now() < end) {
            if (reply.get("/v1/snapshot", token).empty())
                throw std::runtime_error("a snapshot is empty");
            ++read;
        }
    });
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begun;
    fmt::print("{:<44} {:>7.1f} a second  by {} clients\n", "whole snapshots", static_cast<double>(read) / took.count(),
               readers);
}
