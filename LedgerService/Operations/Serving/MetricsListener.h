#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "LedgerService/Metrics.h"

namespace LedgerService {

/// Answers whoever collects figures, on an address of its own that clients need not reach: one after the other, each
/// within a second. Ends with its object.
class MetricsListener {
public:
    /// `gauges` tells how the service stands each time that somebody asks.
    using Gauges = std::function<std::vector<Metrics::Gauge>()>;
    static std::expected<std::unique_ptr<MetricsListener>, std::string> start(const std::string& address,
                                                                              std::uint16_t port, Gauges gauges);
    ~MetricsListener();
    MetricsListener(const MetricsListener&) = delete;
    MetricsListener& operator=(const MetricsListener&) = delete;

    [[nodiscard]] std::uint16_t port() const;

private:
    struct State;
    explicit MetricsListener(std::unique_ptr<State> state);

    std::unique_ptr<State> m_state;
};

}
