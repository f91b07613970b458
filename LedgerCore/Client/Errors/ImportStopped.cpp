
#include <cstdint>

#include "LedgerCore/Client/Errors/FailureMessages.h"
#include "LedgerCore/Domain/Money/Money.h"

std::string importStoppedText(std::size_t confirmed, std::string_view locale)
{
    if (confirmed == 1)
        return std::string{storeMessages().text("importStopped.one", locale)};
    // A currency without decimals groups its digits as a count does.
    const auto count = Money::formatDigits(static_cast<std::int64_t>(confirmed), "JPY", locale);
    return storeMessages().filled("importStopped.many", locale, {count});
}
