#pragma once

#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

/// One period to choose from.
struct PeriodCell {
    Period period;
    QString label;
    QString count;         // empty for none
    QString spoken;        // "November 2026, 22 entries"
    bool isOffered = true; // not wholly after today and the last entry
    bool isToday = false;  // holds today
    bool isMuted = false;  // a day of the neighbouring month
};

/// The page of periods that the navigator's popover shows: the months of a year, the days of a month, and so on.
struct PeriodGrid {
    QString title;              // "2026"
    std::vector<QString> heads; // weekdays above days; else empty
    std::vector<PeriodCell> cells;
    int columns = 1;
    Period page = Period::allTime(); // what the page covers; its neighbours are the previous and next page
    bool hasNext = true;             // some of the next page is on offer
};

/// The page that shows periods of `span` around `anchor`. Only for spans that repeat, all but all time and dates.
PeriodGrid periodGrid(Period::Span span, std::chrono::year_month_day anchor, std::chrono::year_month_day today,
                      const PeriodCounts& counts, std::string_view locale);

/// The day to anchor the page before or after this one on; nothing beyond the calendar.
std::optional<std::chrono::year_month_day> turnedPage(Period::Span span, std::chrono::year_month_day anchor, int by);

/// The first view of a ledger: this month where it has entries, else the latest month that has.
Period openingPeriod(const PeriodCounts& counts, std::chrono::year_month_day today);
