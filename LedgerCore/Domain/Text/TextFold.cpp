#include "LedgerCore/Domain/Text/TextFold.h"

#include <algorithm>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf8.h>

#include "LedgerCore/Domain/Contract.h"

namespace {

bool isAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](char each) { return static_cast<unsigned char>(each) < 0x80; });
}

std::u16string toUtf16(std::string_view text)
{
    std::u16string wide(text.size(), u'\0');
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(wide.data(), static_cast<std::int32_t>(wide.size()), &length, text.data(),
                         static_cast<std::int32_t>(text.size()), 0xFFFD, nullptr, &status);
    require(U_SUCCESS(status) != 0, "UTF-16 never needs more units than UTF-8 has bytes");
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

std::u16string decomposed(const std::u16string& text)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto* nfd = unorm2_getNFDInstance(&status);
    std::u16string result(text.size() * 4 + 4, u'\0');
    const auto length = unorm2_normalize(nfd, text.data(), static_cast<std::int32_t>(text.size()), result.data(),
                                         static_cast<std::int32_t>(result.size()), &status);
    require(U_SUCCESS(status) != 0, "a canonical decomposition is at most four times as long");
    result.resize(static_cast<std::size_t>(length));
    return result;
}

/// The base letter of the few letters whose stroke is no combining mark.
UChar32 withoutStroke(UChar32 letter)
{
    switch (letter) {
    case 0x0111: // đ
        return 'd';
    case 0x0142: // ł
        return 'l';
    case 0x00F8: // ø
        return 'o';
    default:
        return letter;
    }
}

void appendUtf8(std::string& text, UChar32 letter)
{
    char bytes[U8_MAX_LENGTH] = {};
    std::int32_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, letter);
    text.append(bytes, static_cast<std::size_t>(length));
}

}

std::string_view TextFold::trimmed(std::string_view text)
{
    const auto* bytes = text.data();
    auto first = std::int32_t{0};
    auto last = static_cast<std::int32_t>(text.size());
    while (first < last) {
        auto next = first;
        UChar32 letter = 0;
        U8_NEXT(bytes, next, last, letter); // NOLINT(bugprone-inc-dec-in-conditions): ICU's macro counts so
        if (letter < 0 || !u_isUWhiteSpace(letter))
            break;
        first = next;
    }
    while (last > first) {
        auto previous = last;
        UChar32 letter = 0;
        U8_PREV(bytes, first, previous, letter);
        if (letter < 0 || !u_isUWhiteSpace(letter))
            break;
        last = previous;
    }
    return text.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first));
}

std::string TextFold::folded(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    if (isAscii(text)) {
        for (const char each : text)
            result += each >= 'A' && each <= 'Z' ? static_cast<char>(each + 32) : each;
        return result;
    }
    const auto wide = decomposed(toUtf16(text));
    const auto length = static_cast<std::int32_t>(wide.size());
    for (std::int32_t at = 0; at < length;) {
        UChar32 letter = 0;
        U16_NEXT(wide.data(), at, length, letter);
        if (u_charType(letter) != U_NON_SPACING_MARK)
            appendUtf8(result, withoutStroke(u_foldCase(letter, U_FOLD_CASE_DEFAULT)));
    }
    return result;
}

bool TextFold::areSame(std::string_view left, std::string_view right)
{
    if (left == right || isAscii(left) || isAscii(right))
        return left == right;
    return isValidUtf8(left) && isValidUtf8(right) && decomposed(toUtf16(left)) == decomposed(toUtf16(right));
}

bool TextFold::isValidUtf8(std::string_view text)
{
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < length;) {
        UChar32 letter = 0;
        U8_NEXT(text.data(), at, length, letter); // NOLINT(bugprone-inc-dec-in-conditions): ICU's macro counts so
        if (letter < 0)
            return false;
    }
    return true;
}

std::size_t TextFold::length(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char each) { return (static_cast<unsigned char>(each) & 0xC0) != 0x80; }));
}
