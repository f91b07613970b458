#include "LedgerCore/Domain/Entries/Drafts/EntryValidationError.h"

#include <fmt/format.h>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

struct Message {
    std::string_view locale;

    std::string operator()(const EntryValidationError::ReserveInsufficient& reserve) const
    {
        return fmt::format("{} {}", EntryWords::text("reserveInsufficient", locale),
                           Money::format(reserve.available, reserve.currency, locale));
    }
    std::string operator()(const EntryValidationError::ReserveUnknown& reserve) const
    {
        return fmt::format("{} {}", EntryWords::text("reserveUnknown", locale), reserve.currency);
    }
    std::string operator()(EntryValidationError::DestinationRequired) const
    {
        return std::string{EntryWords::text("targetReselect", locale)};
    }
    std::string operator()(EntryValidationError::CategoryRequired) const
    {
        return std::string{EntryCopy::words().text("chooseCategory", locale)};
    }
    std::string operator()(EntryValidationError::AccountRequired) const
    {
        return std::string{EntryCopy::words().text("accountRequired", locale)};
    }
    std::string operator()(EntryValidationError::PositiveAmount) const
    {
        return std::string{EntryCopy::words().text("positiveAmount", locale)};
    }
};

}

std::string EntryValidationError::message(std::string_view locale) const
{
    return std::visit(Message{locale}, what);
}
