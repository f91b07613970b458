#include "LedgerService/Http/Routes/QueryText.h"

#include <algorithm>
#include <charconv>

#include "LedgerCore/Domain/Text/TextFold.h"

namespace LedgerService {

namespace {

/// Nothing for what is no text: some databases refuse to look for it.
std::optional<std::string> unescaped(std::string_view text)
{
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            plain += text[at] == '+' ? ' ' : text[at];
            continue;
        }
        const auto digits = text.substr(at + 1, 2);
        unsigned byte = 0;
        const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (failure != std::errc{} || digits.size() != 2 || end != digits.data() + 2)
            return std::nullopt;
        plain += static_cast<char>(byte);
        at += 2;
    }
    return TextFold::isValidUtf8(plain) && !plain.contains('\0') ? std::optional{plain} : std::nullopt;
}

}

std::optional<std::map<std::string, std::string>> QueryText::fieldsOf(std::string_view query)
{
    std::map<std::string, std::string> fields;
    while (!query.empty()) {
        const auto field = query.substr(0, query.find('&'));
        query.remove_prefix(std::min(query.size(), field.size() + 1));
        const auto name = unescaped(field.substr(0, field.find('=')));
        const auto sign = field.find('=');
        const auto value = unescaped(sign == std::string_view::npos ? std::string_view{} : field.substr(sign + 1));
        if (!name || !value || !fields.emplace(*name, *value).second)
            return std::nullopt;
    }
    return fields;
}

}
