#include "LedgerUI/Presentation/Print/PrintHead.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

PrintedFact PrintHead::period(const Period& period, std::string_view locale)
{
    return {wordIn(locale, printWords(), "period"), periodLabel(period, locale)};
}

PrintedFact PrintHead::accounts(const std::vector<std::string>& names, std::string_view locale)
{
    QStringList texts;
    for (const auto& name : names)
        texts << qString(name);
    return {wordIn(locale, printWords(), "accounts"),
            texts.isEmpty() ? wordIn(locale, printWords(), "accounts.all") : listed(texts, locale)};
}

PrintedFact PrintHead::currency(std::string_view code, std::string_view locale)
{
    return {wordIn(locale, printWords(), "currency"), qString(code)};
}

PrintedFact PrintHead::asOf(const PrintMoment& moment, std::string_view locale)
{
    const auto day = DayText::shortDate(moment.day, locale).toStdString();
    const auto time = DayText::timeOfDay(moment.time, locale).toStdString();
    return {wordIn(locale, printWords(), "asOf"), wordIn(locale, printWords(), "moment", {day, time})};
}

QString PrintHead::days(const Period& period, const PrintMoment& moment)
{
    if (period.isAllTime())
        return qString(moment.day);
    const auto first = LedgerDay::format(period.firstDay());
    const auto last = LedgerDay::format(period.lastDay());
    return qString(first == last ? first : first + "_" + last);
}
