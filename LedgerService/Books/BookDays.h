#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/FinancialSettings.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// The days on which entries can be booked. All days are "YYYY-MM-DD".
namespace BookDays {

/// The day that a valid text names.
std::chrono::sys_days parsed(std::string_view day);

/// `day` moved by a number of days.
std::string shifted(std::string_view day, int days);

/// The first day of the books, once it is confirmed.
std::optional<std::string> start(const std::optional<FinancialSettings>& settings);

/// What keeps an entry from being booked on the day, or nothing. Members may live a time zone ahead of the service, so
/// its tomorrow is allowed.
std::optional<Refusal> whyNot(std::string_view day, std::string_view today,
                              const std::optional<FinancialSettings>& settings);

}

}
