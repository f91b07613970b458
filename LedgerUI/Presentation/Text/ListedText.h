#pragma once

#include <string_view>

#include <QStringList>

#include "LedgerUI/Presentation/Text/Words.h"

/// The parts that are not empty, side by side as the language lists them: "Exchange, Singapore".
QString listed(QStringList parts, std::string_view locale);
