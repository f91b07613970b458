#include "LedgerUI/Components/Text/EntryKindColor.h"

#include <QColor>

#include "LedgerCore/Domain/Settings/TransactionColorOptions.h"

namespace {

QRgb parsed(std::string_view hex)
{
    return QColor{QLatin1StringView{hex.data(), static_cast<qsizetype>(hex.size())}}.rgb();
}

}

ThemeColor entryKindColor(std::string_view kind, const LedgerSnapshot& snapshot)
{
    return paletteColor(TransactionColorOptions::of(kind, snapshot));
}

ThemeColor paletteColor(const TransactionColorOption& option)
{
    return {parsed(option.lightHex), parsed(option.darkHex)};
}
