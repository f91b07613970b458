#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Reports/ReportFigure.h"

/// "Income", "Other movements", "All movements": what moves the money of these movements.
QString movementsText(const std::set<Movement>& movements, std::string_view locale);

/// What a figure is called, without its accounts and category: "Income, IDR".
QString reportFigureText(const ReportFigure& figure, std::string_view locale);
