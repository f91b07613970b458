#include "LedgerService/Http/Routes/QueryText.h"

#include <algorithm>
#include <charconv>

namespace LedgerService {

namespace {

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
    return plain;
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
