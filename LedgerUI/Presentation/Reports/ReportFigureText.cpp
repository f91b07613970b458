#include "LedgerUI/Presentation/Reports/ReportFigureText.h"

#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

QString movementsText(const std::set<Movement>& movements, std::string_view locale)
{
    const auto text = [&](std::string_view key) { return wordIn(locale, reportWords(), key); };
    if (movements.empty())
        return text("movement.all");
    if (movements == ReportFigure::incomeMovements())
        return text("income");
    if (movements == ReportFigure::expenseMovements())
        return text("expense");
    if (movements == ReportFigure::netMovements())
        return text("net");
    if (movements == ReportFigure::otherMovements())
        return text("other");
    QStringList names;
    for (const auto movement : movements)
        names << text("movement." + std::string{rawValue(movement)});
    return listed(names, locale);
}

QString reportFigureText(const ReportFigure& figure, std::string_view locale)
{
    const auto text = [&](std::string_view key) { return wordIn(locale, reportWords(), key); };
    auto movements = movementsText(figure.movements, locale);
    if (figure.legs == ReportFigure::Legs::funds && figure.movements.empty())
        movements = text("table.funds");
    else if (figure.legs == ReportFigure::Legs::funds && figure.movements.contains(Movement::income))
        movements = text("fund.reversals");
    QStringList parts{movements};
    if (figure.direction != LegDirection::both)
        parts << text(figure.direction == LegDirection::arriving ? "fund.in" : "fund.out");
    parts << QString::fromStdString(figure.scope.currency);
    return listed(parts, locale);
}
