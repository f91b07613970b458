#include "LedgerCore/Domain/Text/PasswordRule.h"

#include "LedgerCore/Domain/Text/TextFold.h"

std::optional<PasswordRule::Refusal> PasswordRule::whyNot(std::string_view password)
{
    if (password.size() > maximumBytes)
        return Refusal::tooLong;
    if (!TextFold::isValidUtf8(password))
        return Refusal::notText;
    return TextFold::length(password) < minimumLength ? std::optional{Refusal::tooShort} : std::nullopt;
}
