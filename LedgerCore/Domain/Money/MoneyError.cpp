#include "LedgerCore/Domain/Money/MoneyError.h"

#include "LedgerCore/Domain/Money/MoneyErrorWords.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/WordTable.h"

std::string_view rawValue(MoneyError error)
{
    switch (error) {
    case MoneyError::invalidFormat:
        return "invalidFormat";
    case MoneyError::excessPrecision:
        return "excessPrecision";
    case MoneyError::outOfRange:
        return "outOfRange";
    case MoneyError::unsupportedCurrency:
        return "unsupportedCurrency";
    }
    return {};
}

std::string_view friendlyMessage(MoneyError error, std::string_view locale)
{
    return moneyErrorWords().text(rawValue(error), AppLanguage::locale(locale));
}
