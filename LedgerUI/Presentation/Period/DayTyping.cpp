#include "LedgerUI/Presentation/Period/DayTyping.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <vector>

#include <QRegularExpression>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

year_month_day calendarDay(std::string_view day)
{
    return LedgerDay::parse(day).value_or(std::chrono::year{1970} / std::chrono::January / 1);
}

bool isYearFirst(std::string_view locale)
{
    return locale.starts_with("zh");
}

std::optional<std::string> dayOf(int year, unsigned month, unsigned day)
{
    const year_month_day named{std::chrono::year{year}, std::chrono::month{month}, std::chrono::day{day}};
    if (!named.ok() || year < 1 || year > 9999)
        return std::nullopt;
    return LedgerDay::format(named);
}

/// A year of two digits is one of this century.
int fullYear(const QString& digits)
{
    return digits.size() <= 2 ? 2000 + digits.toInt() : digits.toInt();
}

std::optional<std::string> withoutYear(unsigned month, unsigned day, const DayBounds& bounds)
{
    const int latest = static_cast<int>(calendarDay(bounds.latest).year());
    for (const int year : {latest, latest - 1}) {
        const auto named = dayOf(year, month, day);
        if (named && bounds.hold(*named))
            return named;
    }
    return dayOf(latest, month, day);
}

}

DayBounds DayTyping::bounds(const LedgerSnapshot& snapshot, std::string_view today)
{
    DayBounds bounds;
    bounds.today = today;
    bounds.latest = EntryDays::latest(today);
    const auto start = EntryDays::start(snapshot.financialSettings);
    bounds.earliest = LedgerDay::isValid(start) ? start : FinancialSettingsRules::earliestStart;
    return bounds;
}

std::string DayTyping::moved(std::string_view day, int by, const DayBounds& bounds)
{
    const auto there = LedgerDay::format(sys_days{calendarDay(day)} + days{by});
    const auto held = std::min(there, bounds.latest);
    return bounds.earliest ? std::max(held, *bounds.earliest) : held;
}

std::optional<std::string> DayTyping::typed(const QString& text, std::string_view shown, const DayBounds& bounds,
                                            std::string_view locale)
{
    static const QRegularExpression numbers{QStringLiteral(R"(^\d{1,4}(?:[^\d]+\d{1,4}){0,2}[^\d]*$)")};
    static const QRegularExpression number{QStringLiteral(R"(\d+)")};
    const auto trimmed = text.trimmed();
    if (!numbers.match(trimmed).hasMatch())
        return std::nullopt;
    std::vector<QString> parts;
    for (auto found = number.globalMatch(trimmed); found.hasNext();)
        parts.push_back(found.next().captured());
    const auto at = [&](std::size_t index) { return parts[index].toUInt(); };
    const auto current = calendarDay(shown);
    if (parts.size() == 1)
        return dayOf(static_cast<int>(current.year()), static_cast<unsigned>(current.month()), at(0));
    if (parts.size() == 2)
        return isYearFirst(locale) ? withoutYear(at(0), at(1), bounds) : withoutYear(at(1), at(0), bounds);
    if (parts[0].size() == 4 || isYearFirst(locale))
        return dayOf(fullYear(parts[0]), at(1), at(2));
    return dayOf(fullYear(parts[2]), at(1), at(0));
}

QString DayTyping::written(std::string_view day, std::string_view locale)
{
    if (!LedgerDay::isValid(day))
        return qString(day);
    const auto text = qString(day);
    const auto year = text.left(4);
    const auto month = text.mid(5, 2);
    const auto date = text.mid(8, 2);
    const auto parts = isYearFirst(locale) ? QStringList{year, month, date} : QStringList{date, month, year};
    return parts.join(QLatin1Char{'/'});
}

PeriodGrid DayTyping::month(std::string_view shown, const DayBounds& bounds, std::string_view locale)
{
    const auto today = calendarDay(bounds.today);
    auto grid = periodGrid(Period::Span::day, calendarDay(shown), calendarDay(bounds.latest), PeriodCounts{}, locale);
    for (auto& cell : grid.cells) {
        const auto day = LedgerDay::format(cell.period.firstDay());
        cell.isOffered = bounds.hold(day);
        cell.isToday = cell.period.firstDay() == today;
        cell.count.clear();
        cell.spoken = DayText::weekdayAndDay(day, locale);
    }
    return grid;
}

QString DayTyping::whyNot(std::string_view day, const DayBounds& bounds, std::string_view locale)
{
    if (day > bounds.latest)
        return wordIn(locale, dayWords(), "tooLate", {DayText::longDay(bounds.latest, locale).toStdString()});
    if (bounds.earliest && day < *bounds.earliest)
        return wordIn(locale, dayWords(), "tooEarly", {DayText::longDay(*bounds.earliest, locale).toStdString()});
    return {};
}
