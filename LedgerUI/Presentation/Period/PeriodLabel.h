#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Calendar/Period.h"

/// What a period is called: "November 2026", "16–22 Nov 2026", "Q4 2026", "All time".
QString periodLabel(const Period& period, std::string_view locale);

/// A quarter without its year: "Q4", "第 4 季度", "K4".
QString shortQuarterLabel(const Period& quarter, std::string_view locale);

/// What kind of period it is: "Month", "All time", "Dates…".
QString spanLabel(Period::Span span, std::string_view locale);

/// The step back to today in words: "This month", "Today".
QString thisPeriodLabel(Period::Span span, std::string_view locale);

/// What the figures in a grid of such periods count: "Entries per month".
QString entriesPerLabel(Period::Span span, std::string_view locale);
