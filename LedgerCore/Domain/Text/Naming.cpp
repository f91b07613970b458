#include "LedgerCore/Domain/Text/Naming.h"

#include <algorithm>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

bool breaksLine(UChar32 each)
{
    const auto type = u_charType(each);
    return type == U_CONTROL_CHAR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR;
}

/// Embeddings, overrides and isolates; marks, which some languages need, are none.
bool turnsDirection(UChar32 each)
{
    return (each >= 0x202A && each <= 0x202E) || (each >= 0x2066 && each <= 0x2069);
}

/// UTF-8 on one line that reads in the order in which it is written.
bool isReadable(std::string_view text)
{
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < length;) {
        UChar32 each = 0;
        U8_NEXT(text.data(), at, length, each); // NOLINT(bugprone-inc-dec-in-conditions)
        if (each < 0 || breaksLine(each) || turnsDirection(each))
            return false;
    }
    return true;
}

/// Whether anything of it is seen: neither space nor a sign without a form of its own.
bool isVisible(std::string_view text)
{
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < length;) {
        UChar32 each = 0;
        U8_NEXT(text.data(), at, length, each); // NOLINT(bugprone-inc-dec-in-conditions)
        if (!u_isUWhiteSpace(each) && !u_hasBinaryProperty(each, UCHAR_DEFAULT_IGNORABLE_CODE_POINT))
            return true;
    }
    return false;
}

/// Signs that would end an address in the header of a mail.
bool endsAddress(char byte)
{
    return std::string_view{" <>,;:\"()[]\\"}.contains(byte);
}

}

bool Naming::isName(std::string_view text)
{
    const auto trimmed = TextFold::trimmed(text);
    return isReadable(trimmed) && isVisible(trimmed) && TextFold::length(trimmed) <= maximumName;
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
           std::ranges::none_of(text, endsAddress) && isReadable(text);
}
