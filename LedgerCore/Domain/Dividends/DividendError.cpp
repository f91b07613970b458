#include "LedgerCore/Domain/Dividends/DividendError.h"

#include <utility>

std::string_view rawValue(DividendError error)
{
    switch (error) {
    case DividendError::invalidAmount:
        return "invalidAmount";
    case DividendError::invalidShares:
        return "invalidShares";
    case DividendError::participantUnavailable:
        return "participantUnavailable";
    case DividendError::invalidState:
        return "invalidState";
    case DividendError::amountOverflow:
        return "amountOverflow";
    }
    std::unreachable();
}
