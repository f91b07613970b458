#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/FinancialSettings.h"

/// The days on which entries can be booked. All days are "YYYY-MM-DD"; a text that names no day stands for itself.
namespace EntryDays {

/// The first day of the books; empty while none is confirmed. A view of the settings.
std::string_view start(const std::optional<FinancialSettings>& settings);

/// The last day on which an entry can be booked today.
std::string latest(std::string_view today);

/// The first day on which a refund or reversal of an entry of that day can be booked.
std::string earliestAfter(std::string_view day);

enum class Refusal { inFuture, beforeStart };

/// What keeps an entry from being booked on the day, or nothing.
std::optional<Refusal> whyNot(std::string_view day, std::string_view today, std::string_view start);

}
