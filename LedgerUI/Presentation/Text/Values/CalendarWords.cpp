#include "LedgerUI/Presentation/Text/Values/CalendarWords.h"

#include "LedgerCore/Domain/Text/WordTable.h"

const WordTable& CalendarWords::patterns()
{
    static const WordTable words{
        {"shortDay", "%2%1日", "%1 %2", "%1/%2", "%1 %2"},
        {"longDay", "%3年%2%1日", "%1 %2 %3", "%1 %2, %3", "%1 %2 %3"},
        {"weekdayAndDay", "%3年%2%1日 %4", "%4, %1 %2 %3", "%4, %1 %2, %3", "%4 %1 %2 %3"},
        {"month", "%3年%2", "%2 %3", "%2 năm %3", "%2 %3"},
        {"year", "%3年", "%3", "%3", "%3"},
        {"shortDate", "%3年%2%1日", "%1 %2 %3", "%1/%2/%3", "%1 %2 %3"},
        {"shortMonth", "%2", "%2", "Thg %2", "%2"},
        {"shortMonthOfYear", "%3年%2", "%2 %3", "%2/%3", "%2 %3"},
        {"timeOfDay", "%1:%2", "%1.%2", "%1:%2", "%1:%2"},
    };
    return words;
}

const WordTable& CalendarWords::ranges()
{
    static const WordTable words{
        {"inMonth", "%4年%3%1日–%2日", "%1–%2 %3 %4", "%1–%2/%3/%4", "%1–%2 %3 %4"},
        {"inYear", "%4年%1–%2", "%1 – %2 %4", "%1 – %2/%4", "%1 – %2 %4"},
        {"acrossYears", "%1–%2", "%1 – %2", "%1 – %2", "%1 – %2"},
    };
    return words;
}

const WordTable& CalendarWords::longMonths()
{
    static const WordTable words{
        {"01", "1月", "Januari", "tháng 1", "January"},
        {"02", "2月", "Februari", "tháng 2", "February"},
        {"03", "3月", "Maret", "tháng 3", "March"},
        {"04", "4月", "April", "tháng 4", "April"},
        {"05", "5月", "Mei", "tháng 5", "May"},
        {"06", "6月", "Juni", "tháng 6", "June"},
        {"07", "7月", "Juli", "tháng 7", "July"},
        {"08", "8月", "Agustus", "tháng 8", "August"},
        {"09", "9月", "September", "tháng 9", "September"},
        {"10", "10月", "Oktober", "tháng 10", "October"},
        {"11", "11月", "November", "tháng 11", "November"},
        {"12", "12月", "Desember", "tháng 12", "December"},
    };
    return words;
}

const WordTable& CalendarWords::shortMonths()
{
    static const WordTable words{
        {"01", "1月", "Jan", "1", "Jan"},   {"02", "2月", "Feb", "2", "Feb"},   {"03", "3月", "Mar", "3", "Mar"},
        {"04", "4月", "Apr", "4", "Apr"},   {"05", "5月", "Mei", "5", "May"},   {"06", "6月", "Jun", "6", "Jun"},
        {"07", "7月", "Jul", "7", "Jul"},   {"08", "8月", "Agu", "8", "Aug"},   {"09", "9月", "Sep", "9", "Sep"},
        {"10", "10月", "Okt", "10", "Oct"}, {"11", "11月", "Nov", "11", "Nov"}, {"12", "12月", "Des", "12", "Dec"},
    };
    return words;
}

const WordTable& CalendarWords::weekdays()
{
    static const WordTable words{
        {"0", "周日", "Min", "CN", "Sun"}, {"1", "周一", "Sen", "T2", "Mon"}, {"2", "周二", "Sel", "T3", "Tue"},
        {"3", "周三", "Rab", "T4", "Wed"}, {"4", "周四", "Kam", "T5", "Thu"}, {"5", "周五", "Jum", "T6", "Fri"},
        {"6", "周六", "Sab", "T7", "Sat"},
    };
    return words;
}
