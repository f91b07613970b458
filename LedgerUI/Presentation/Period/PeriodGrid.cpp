#include "LedgerUI/Presentation/Period/PeriodGrid.h"

#include <string>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using std::chrono::year_month_day;
using Span = Period::Span;

constexpr int yearsOnPage = 12;
constexpr int weekdays = 7;

/// Twelve years, so that 2026 stands on the page of 2016 to 2027.
Period yearsAround(year_month_day anchor)
{
    const auto year = static_cast<int>(anchor.year());
    const auto first = std::max(year - year % yearsOnPage, 1);
    const auto last = std::min(first + yearsOnPage - 1, 9999);
    return Period::between(std::chrono::year{first} / 1 / 1, std::chrono::year{last} / 12 / 31)
        .value_or(Period::containing(Span::year, anchor));
}

/// What one page covers.
Period pageOf(Span span, year_month_day anchor)
{
    switch (span) {
    case Span::day:
    case Span::week:
        return Period::containing(Span::month, anchor);
    case Span::month:
    case Span::quarter:
        return Period::containing(Span::year, anchor);
    case Span::year:
        return yearsAround(anchor);
    case Span::allTime:
    case Span::dates:
        break;
    }
    require(false, "only spans that repeat have a grid");
    return Period::allTime();
}

QString cellLabel(const Period& period, std::string_view locale)
{
    const auto first = period.firstDay();
    switch (period.span()) {
    case Span::day:
        return QString::number(static_cast<unsigned>(first.day()));
    case Span::week:
        return wordIn(locale, periodWords(), "weekOf",
                      {std::to_string(isoWeek(first).number), periodLabel(period, locale).toStdString()});
    case Span::month:
        return DayText::shortMonth(first.month(), locale);
    case Span::quarter:
        return shortQuarterLabel(period, locale);
    default:
        return periodLabel(period, locale);
    }
}

int columnsOf(Span span)
{
    switch (span) {
    case Span::day:
        return weekdays;
    case Span::week:
        return 1;
    case Span::quarter:
        return 2;
    default:
        return 3;
    }
}

QString titleOf(Span span, const Period& page, std::string_view locale)
{
    if (span != Span::year)
        return periodLabel(page, locale);
    return QStringLiteral("%1–%2")
        .arg(static_cast<int>(page.firstDay().year()))
        .arg(static_cast<int>(page.lastDay().year()));
}

PeriodCell cellFor(const Period& period, const Period& page, year_month_day today, const PeriodCounts& counts,
                   std::string_view locale)
{
    PeriodCell cell{.period = period, .label = cellLabel(period, locale), .count = {}, .spoken = {}};
    const auto entries = counts.in(period);
    if (entries > 0)
        cell.count = QString::fromStdString(groupedNumber(entries, locale));
    const auto label = periodLabel(period, locale).toStdString();
    cell.spoken = entries == 1 ? wordIn(locale, periodWords(), "cell.one", {label})
                               : wordIn(locale, periodWords(), "cell.entries", {label, groupedNumber(entries, locale)});
    cell.isOffered = period.firstDay() <= counts.horizon(today);
    cell.isToday = period.firstDay() <= today && today <= period.lastDay();
    cell.isMuted = period.lastDay() < page.firstDay() || period.firstDay() > page.lastDay();
    return cell;
}

}

PeriodGrid periodGrid(Span span, year_month_day anchor, year_month_day today, const PeriodCounts& counts,
                      std::string_view locale)
{
    const auto page = pageOf(span, anchor);
    PeriodGrid grid{.title = titleOf(span, page, locale),
                    .heads = {},
                    .cells = {},
                    .columns = columnsOf(span),
                    .page = page,
                    .hasNext = page.lastDay() < counts.horizon(today)};
    auto first = page.firstDay();
    auto last = page.lastDay();
    if (span == Span::day) {
        // Whole weeks, so that every weekday stands under its head.
        first = Period::containing(Span::week, first).firstDay();
        last = Period::containing(Span::week, last).lastDay();
        for (unsigned day = 1; day <= weekdays; ++day)
            grid.heads.push_back(DayText::shortWeekday(std::chrono::weekday{day}, locale));
    }
    for (std::optional period = Period::containing(span, first); period && period->firstDay() <= last;
         period = period->next())
        grid.cells.push_back(cellFor(*period, page, today, counts, locale));
    return grid;
}

std::optional<year_month_day> turnedPage(Span span, year_month_day anchor, int by)
{
    const auto page = pageOf(span, anchor);
    const auto neighbour = by < 0 ? page.previous() : page.next();
    if (!neighbour)
        return std::nullopt;
    return neighbour->lastDay();
}

Period openingPeriod(const PeriodCounts& counts, year_month_day today)
{
    auto current = Period::containing(Span::month, today);
    if (counts.in(current) > 0)
        return current;
    if (const auto latest = counts.latestDayUntil(today))
        return Period::containing(Span::month, *latest);
    const auto future = counts.latestDay();
    return future ? Period::containing(Span::month, *future) : current;
}
