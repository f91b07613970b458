#include "LedgerCore/Domain/Json.h"

#include <charconv>

#include <simdjson.h>

namespace {

using Json::DecodeError;
using Json::Detail::Outcome;
namespace ondemand = simdjson::ondemand;

DecodeError kindOf(simdjson::error_code code)
{
    switch (code) {
    case simdjson::INCORRECT_TYPE:
    case simdjson::NUMBER_ERROR:
    case simdjson::NUMBER_OUT_OF_RANGE:
        return DecodeError::wrongType;
    default:
        return DecodeError::malformed;
    }
}

ondemand::value& valueOf(void* value)
{
    return *static_cast<ondemand::value*>(value);
}

/// The text between the quotation marks of a string that starts at `start`, or nothing when it holds an escape and
/// must be read with care. The closing mark is known to be there.
std::optional<std::string_view> plainText(const char* start)
{
    const auto* end = start;
    while (*end != '"' && *end != '\\')
        ++end;
    return *end == '"' ? std::optional{std::string_view{start, end}} : std::nullopt;
}

/// After so many elements the rest of a long array is worth a guess.
constexpr std::size_t elementsSeenForHint = 2048;

/// Deeper documents are nobody's records, and would exhaust the stack.
constexpr std::size_t maximumDepth = 64;

}

namespace Json::Detail {

bool Reader::isNull()
{
    bool null = false;
    return !valueOf(m_value).is_null().get(null) && null;
}

Outcome Reader::read(std::string& out)
{
    ondemand::raw_json_string raw;
    auto& value = valueOf(m_value);
    if (value.raw_json_token().starts_with('"')) {
        if (const auto plain = plainText(value.raw_json_token().data() + 1)) {
            out.assign(*plain);
            return value.get_raw_json_string().get(raw) ? Outcome{DecodeError::malformed} : std::nullopt;
        }
    }
    std::string_view text;
    if (const auto error = value.get_string().get(text))
        return kindOf(error);
    out.assign(text);
    return std::nullopt;
}

Outcome Reader::read(std::int64_t& out)
{
    ondemand::json_type type{};
    if (const auto error = valueOf(m_value).type().get(type))
        return kindOf(error);
    if (type != ondemand::json_type::number)
        return DecodeError::wrongType;
    const auto error = valueOf(m_value).get_int64().get(out);
    return error ? Outcome{kindOf(error)} : std::nullopt;
}

Outcome Reader::read(bool& out)
{
    const auto error = valueOf(m_value).get_bool().get(out);
    return error ? Outcome{kindOf(error)} : std::nullopt;
}

Outcome Reader::eachField(void* context, FieldVisitor visit)
{
    ondemand::object object;
    if (const auto error = valueOf(m_value).get_object().get(object))
        return kindOf(error);
    for (auto each : object) {
        ondemand::field field;
        if (const auto error = std::move(each).get(field))
            return kindOf(error);
        const auto plain = plainText(field.key().raw());
        std::string_view key = plain.value_or("");
        if (!plain) {
            if (const auto error = field.unescaped_key().get(key))
                return kindOf(error);
        }
        Reader value{&field.value(), m_end};
        if (const auto failed = visit(context, key, value))
            return failed;
    }
    return std::nullopt;
}

Outcome Reader::eachElement(void* context, ElementVisitor visit, SizeHint expect)
{
    ondemand::array array;
    if (const auto error = valueOf(m_value).get_array().get(array))
        return kindOf(error);
    const char* first = nullptr;
    std::size_t seen = 0;
    for (auto each : array) {
        ondemand::value element;
        if (const auto error = std::move(each).get(element))
            return kindOf(error);
        const auto* const here = element.raw_json_token().data();
        if (seen++ == 0)
            first = here;
        if (seen == elementsSeenForHint) {
            const auto size = static_cast<std::size_t>(here - first) / (seen - 1) + 1;
            expect(context, seen + static_cast<std::size_t>(m_end - here) / size);
        }
        Reader value{&element, m_end};
        if (const auto failed = visit(context, value))
            return failed;
    }
    return std::nullopt;
}

Outcome readDocument(std::string& text, void* context, Reader::ElementVisitor visit)
{
    static_assert(padding >= simdjson::SIMDJSON_PADDING);
    ondemand::parser parser;
    if (parser.allocate(text.size(), maximumDepth))
        return DecodeError::malformed;
    const auto size = text.size();
    text.append(padding, ' ');
    const simdjson::padded_string_view padded{text.data(), size, text.size()};
    ondemand::document document;
    if (parser.iterate(padded).get(document))
        return DecodeError::malformed;
    ondemand::value root;
    if (const auto error = document.get_value().get(root))
        return error == simdjson::SCALAR_DOCUMENT_AS_VALUE ? DecodeError::wrongType : kindOf(error);
    Reader reader{&root, text.data() + size};
    if (const auto failed = visit(context, reader))
        return failed;
    const char* rest = nullptr;
    const bool atEnd = document.current_location().get(rest) == simdjson::OUT_OF_BOUNDS;
    return atEnd ? std::nullopt : Outcome{DecodeError::malformed};
}

void writeString(std::string& out, std::string_view text)
{
    constexpr auto hex = "0123456789abcdef";
    out += '"';
    std::size_t plain = 0; // the start of what was not yet copied
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte >= 0x20 && byte != '"' && byte != '\\')
            continue;
        out += text.substr(plain, at - plain);
        plain = at + 1;
        if (byte >= 0x20) {
            out += '\\';
            out += text[at];
        } else {
            out += "\\u00";
            out += hex[byte >> 4];
            out += hex[byte & 15];
        }
    }
    out += text.substr(plain);
    out += '"';
}

void writeInteger(std::string& out, std::int64_t number)
{
    char digits[20];
    const auto written = std::to_chars(digits, digits + sizeof digits, number);
    out.append(digits, written.ptr);
}

}
