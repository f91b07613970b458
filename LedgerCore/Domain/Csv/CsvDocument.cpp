#include "LedgerCore/Domain/Csv/CsvDocument.h"

#include <charconv>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace {

/// What a spreadsheet passes over in front of a formula: white space, line ends, control and format characters.
bool isPassedOver(UChar32 letter)
{
    return letter >= 0 &&
           (u_isUWhiteSpace(letter) || u_charType(letter) == U_CONTROL_CHAR || u_charType(letter) == U_FORMAT_CHAR);
}

bool looksLikeFormula(std::string_view value)
{
    const auto length = static_cast<std::int32_t>(value.size());
    std::int32_t at = 0;
    UChar32 letter = 0;
    do {
        if (at == length)
            return false;
        U8_NEXT(value.data(), at, length, letter); // NOLINT(bugprone-inc-dec-in-conditions)
    } while (isPassedOver(letter));
    return letter == '=' || letter == '+' || letter == '-' || letter == '@';
}

}

CsvDocument::CsvDocument(std::span<const std::string_view> header, std::size_t expectedBytes)
{
    m_text.reserve(expectedBytes);
    m_text += byteOrderMark;
    for (const auto name : header)
        field(name);
    endRecord();
}

void CsvDocument::separate()
{
    if (!std::exchange(m_atStart, false))
        m_text += ',';
}

void CsvDocument::field(std::string_view value)
{
    separate();
    appendEscaped(m_text, value);
}

void CsvDocument::number(std::int64_t value)
{
    char digits[20];
    const auto written = std::to_chars(digits, digits + sizeof digits, value);
    field({digits, written.ptr});
}

void CsvDocument::record(std::initializer_list<std::string_view> values)
{
    for (const auto value : values)
        field(value);
    endRecord();
}

void CsvDocument::escapedField(std::string_view escaped)
{
    separate();
    m_text += escaped;
}

void CsvDocument::endRecord()
{
    m_text += "\r\n";
    m_atStart = true;
}

void CsvDocument::appendEscaped(std::string& text, std::string_view value)
{
    text += looksLikeFormula(value) ? "\"'" : "\"";
    while (true) {
        const auto quote = value.find('"');
        if (quote == std::string_view::npos)
            break;
        text += value.substr(0, quote + 1);
        text += '"';
        value.remove_prefix(quote + 1);
    }
    text += value;
    text += '"';
}
