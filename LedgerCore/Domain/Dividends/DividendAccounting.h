#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string_view>

#include "LedgerCore/Domain/Dividends/DividendBook.h"

/// Single figures of a dividend section. Whoever needs several builds a `DividendBook` and asks that.
namespace DividendAccounting {

std::expected<std::int64_t, DividendError> unpaid(std::string_view batchID, std::string_view participantID,
                                                  const DividendState& state,
                                                  std::optional<std::string_view> throughDay);

std::expected<std::int64_t, DividendError> advanceRemaining(std::string_view advanceID, const DividendState& state,
                                                            std::optional<std::string_view> throughDay);

std::expected<DividendLineSummary, DividendError> lineSummary(std::string_view batchID, std::string_view participantID,
                                                              const DividendState& state,
                                                              std::optional<std::string_view> throughDay);

/// What was paid out to the participant within the days, advances included and returns not taken off.
std::expected<std::int64_t, DividendError> periodPaid(std::string_view currency,
                                                      std::optional<std::string_view> startDay,
                                                      std::optional<std::string_view> endDay,
                                                      std::string_view participantID, const DividendState& state);

}
