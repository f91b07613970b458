#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>

namespace LedgerService {

/// How much a server has to do at one moment.
struct ServerLoad {
    /// What open connections are about.
    enum class Phase : std::size_t { idle, receiving, working, replying };
    static constexpr std::array<std::string_view, 4> phases{"idle", "receiving", "working", "replying"};

    std::array<std::size_t, phases.size()> connections{};
    std::size_t commandsWaiting = 0;               // for their turn to be written
    std::chrono::steady_clock::duration longest{}; // that one of them has waited
    std::size_t signInsWaiting = 0;                // for their password to be looked at, or for one to be hashed
    std::size_t bodyBytes = 0;                     // of requests that are not whole yet
    std::size_t replyBytes = 0;                    // of replies that are not read yet
    std::optional<std::chrono::system_clock::time_point> certificateEnds; // of one that speaks TLS
};

}
