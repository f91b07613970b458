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
    const auto& option = TransactionColorOptions::of(kind, snapshot);
    return {parsed(option.lightHex), parsed(option.darkHex)};
}
