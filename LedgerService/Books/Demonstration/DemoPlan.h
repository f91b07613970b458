#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string_view>

namespace LedgerService {

/// An entry that the demonstration company records again and again. Accounts and people are named by their keys in
/// `DemoWords::names`, categories by theirs.
struct DemoRoutine {
    std::string_view kind;
    int day = 1;         // of the month
    int everyMonths = 1; // in the months whose number, counted from the start, leaves `offsetMonths`
    int offsetMonths = 0;
    int spreadPercent = 0; // the amount varies by up to this much either way
    std::string_view source;
    std::string_view target;
    std::string_view category;
    std::string_view currency;
    std::int64_t amount = 0;        // whole units, such as rupiah or dollars
    std::int64_t roundTo = 1;       // minor units
    std::string_view note;          // key in `DemoWords::notes`
    std::string_view recorder;      // profile of the member
    std::int64_t keep = 0;          // above zero: the amount is what the source holds beyond this, in whole units
    std::string_view received = {}; // exchange: the currency received
    std::int64_t rateMicro = 0;     // exchange: millionths of a unit received for one unit sent
};

namespace DemoPlan {

/// What happens every month or every few months.
std::span<const DemoRoutine> routines();

/// How much of its amount the routine comes to in the month, in percent: trade follows the seasons, rent does not.
int seasonPercentOf(const DemoRoutine& routine, std::chrono::month month);

/// An opening balance on the first day of the books.
struct Opening {
    std::string_view account;
    std::string_view currency;
    std::int64_t amountMinor = 0;
};
std::span<const Opening> openings();

}

}
