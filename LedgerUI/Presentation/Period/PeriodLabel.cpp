#include "LedgerUI/Presentation/Period/PeriodLabel.h"

#include <string>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Span = Period::Span;

std::string_view spanKey(Span span)
{
    switch (span) {
    case Span::day:
        return "day";
    case Span::week:
        return "week";
    case Span::month:
        return "month";
    case Span::quarter:
        return "quarter";
    case Span::year:
        return "year";
    case Span::allTime:
        return "allTime";
    case Span::dates:
        return "dates";
    }
    return {};
}

std::string quarterNumber(const Period& quarter)
{
    return std::to_string((static_cast<unsigned>(quarter.firstDay().month()) + 2) / 3);
}

}

QString periodLabel(const Period& period, std::string_view locale)
{
    const auto first = period.firstDay();
    const auto firstText = LedgerDay::format(first);
    switch (period.span()) {
    case Span::day:
        return DayText::shortDate(firstText, locale);
    case Span::month:
        return DayText::month(first.year() / first.month(), locale);
    case Span::quarter: {
        const auto year = std::to_string(static_cast<int>(first.year()));
        return wordIn(locale, periodWords(), "quarterOfYear", {quarterNumber(period), year});
    }
    case Span::year:
        return DayText::year(first.year(), locale);
    case Span::allTime:
        return spanLabel(Span::allTime, locale);
    case Span::week:
    case Span::dates:
        return DayText::range(firstText, LedgerDay::format(period.lastDay()), locale);
    }
    return {};
}

QString shortQuarterLabel(const Period& quarter, std::string_view locale)
{
    return wordIn(locale, periodWords(), "shortQuarter", {quarterNumber(quarter)});
}

QString spanLabel(Span span, std::string_view locale)
{
    return wordIn(locale, periodWords(), spanKey(span));
}

QString thisPeriodLabel(Span span, std::string_view locale)
{
    return wordIn(locale, periodWords(), "this." + std::string{spanKey(span)});
}

QString entriesPerLabel(Span span, std::string_view locale)
{
    return wordIn(locale, periodWords(), "count." + std::string{spanKey(span)});
}
