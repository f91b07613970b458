#pragma once

#include <cstdint>
#include <string_view>

#include <QString>

#include "LedgerUI/Presentation/Records/RecordRow.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// How the cells of tables of records are written.
namespace RecordText {

/// "45.00 %", in Indonesian "45,00 %".
QString percent(std::int64_t basisPoints, std::string_view locale);

/// Digits alone, a quiet dash for zero. The column or the page says the currency.
RecordCell amount(std::int64_t minor, std::string_view currency, std::string_view locale);
/// The same with a sign before what came and what went.
RecordCell movement(std::int64_t minor, std::string_view currency, std::string_view locale);
RecordCell percentCell(int basisPoints, std::string_view locale);
RecordCell dash();
RecordCell day(std::string_view day, std::string_view locale);

RecordCell bold(RecordCell cell);
RecordCell struck(RecordCell cell);

}
