#include "LedgerUI/Presentation/Text/Values/ByteText.h"

#include <algorithm>

#include "LedgerCore/Domain/Money/Money.h"

QString byteText(std::int64_t bytes, std::string_view locale)
{
    constexpr std::int64_t kilo = 1000;
    constexpr std::int64_t mega = kilo * kilo;
    if (bytes < mega)
        return QStringLiteral("%1 KB").arg((std::max<std::int64_t>(bytes, 1) + kilo - 1) / kilo);
    const auto tenths = (bytes + mega / 20) / (mega / 10);
    const auto point = QLatin1Char(Money::separators(locale).decimal);
    return QStringLiteral("%1%2%3 MB").arg(tenths / 10).arg(point).arg(tenths % 10);
}
