#include "LedgerCore/Domain/Text/Naming.h"

#include <algorithm>

#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

bool isControl(char byte)
{
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

/// White space and signs that would end an address in the header of a mail.
bool endsAddress(char byte)
{
    return isControl(byte) || std::string_view{" <>,;:\"()[]\\"}.contains(byte);
}

}

bool Naming::isName(std::string_view text)
{
    const auto trimmed = TextFold::trimmed(text);
    return !trimmed.empty() && TextFold::isValidUtf8(text) && std::ranges::none_of(trimmed, isControl) &&
           TextFold::length(trimmed) <= maximumName;
}

bool Naming::isCountry(std::string_view code)
{
    return code.size() == 2 && std::ranges::all_of(code, [](char each) { return each >= 'A' && each <= 'Z'; });
}

bool Naming::isEmail(std::string_view text)
{
    const auto at = text.find('@');
    if (at == std::string_view::npos || text.size() > maximumEmail)
        return false;
    const auto host = text.substr(at + 1);
    return at > 0 && !host.empty() && !host.contains('@') && !host.starts_with('.') && !host.ends_with('.') &&
           std::ranges::none_of(text, endsAddress) && TextFold::isValidUtf8(text);
}
