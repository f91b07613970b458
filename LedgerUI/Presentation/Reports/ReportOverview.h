#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Reports/ReportBook.h"
#include "LedgerUI/Presentation/Charts/ChartLayout.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// One currency in the chosen period: opening + net + other = closing.
struct CurrencyOverview {
    std::string currency;
    QString name; // "Indonesian rupiah"
    MoneyText opening;
    MoneyText income;
    MoneyText expense;
    MoneyText net; // income and expense together
    MoneyText other;
    MoneyText closing;
    std::vector<std::int64_t> monthEnds; // balances, minor units, oldest first

    bool operator==(const CurrencyOverview&) const = default;
};

/// A part of a whole, as a row with a bar: a category with its share of all expenses, or of all income.
struct ShareRow {
    std::optional<std::string> categoryID;        // unset for the rest; empty for the money of no category
    std::set<std::string, std::less<>> rest = {}; // the categories that the rest is made of
    QString name;
    MoneyText amount;
    QString share;       // "39.3 %"
    double fraction = 0; // of the largest row, for the bar
    bool operator==(const ShareRow&) const = default;
};

/// What the overview of the reports page shows.
struct ReportOverview {
    std::vector<CurrencyOverview> currencies;
    std::string currency; // that chart and list are about; empty when there is none
    ChartData chart;      // income, expense and net of twelve months; the chosen month when the period is one
    std::vector<std::chrono::year_month> months; // of the chart's slots
    Report monthly = {};                         // the same months in figures
    std::vector<ShareRow> largestExpenses;
    std::vector<ShareRow> largestIncome;

    bool operator==(const ReportOverview&) const = default;
};

namespace ReportOverviews {

/// Which figures are asked for.
struct Question {
    Period period;
    std::string currency; // the first one with movement, or held, when it is not among those of the books
    std::optional<std::set<std::string, std::less<>>> accountIDs; // unset: all
    std::chrono::year_month_day today;                            // the chart of all time ends here
};

/// The months that the chart shows: twelve, the last one holding the end of the period, or today where the period has
/// no end or ends later.
std::vector<std::chrono::year_month> chartMonths(const Period& period, std::chrono::year_month_day today);

/// Fails as a whole rather than show part of the figures. Currencies stand in the order of the pickers.
std::expected<ReportOverview, ReportError> overview(const ReportBook& book, const LedgerSnapshot& snapshot,
                                                    const Question& question, std::string_view locale);

/// A share in tenths of a percent, rounded half up: "39.3 %". Both amounts have the same sign; a whole of zero has no
/// shares.
QString shareText(std::int64_t part, std::int64_t whole, std::string_view locale);

}
