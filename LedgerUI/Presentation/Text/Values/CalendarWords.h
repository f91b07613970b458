#pragma once

class WordTable;

/// How days, months and spans of days are written.
namespace CalendarWords {

/// "%1" is the day of the month, "%2" the month, "%3" the year, "%4" the weekday.
const WordTable& patterns();

/// "%1" is the first and "%2" the last day of the month, "%3" the month, "%4" the year; across months "%1" and "%2" are
/// whole days.
const WordTable& ranges();

/// Keys are the two digits of the month; Vietnamese and Chinese count theirs.
const WordTable& longMonths();

/// The same, short. Vietnamese writes days in figures: the number alone.
const WordTable& shortMonths();

/// Keys count from Sunday.
const WordTable& weekdays();

}
