#include "LedgerCore/Domain/Json/Json.h"

#include <charconv>
#include <cstring>
#include <memory>

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

/// The text between the quotation marks of a key that starts at `start`, or nothing when it holds an escape and must
/// be read with care. The closing mark is known to be there.
std::optional<std::string_view> plainKey(const char* start)
{
    const auto* end = start;
    while (*end != '"' && *end != '\\')
        ++end;
    return *end == '"' ? std::optional{std::string_view{start, end}} : std::nullopt;
}

/// Whether a string value holds an escape, found without looking at each of its bytes.
bool isEscaped(std::string_view token, Json::Detail::Document& document)
{
    const auto* const start = token.data();
    if (document.nextEscape < start) {
        const auto* const found = std::memchr(start, '\\', static_cast<std::size_t>(document.end - start));
        document.nextEscape = found == nullptr ? document.end : static_cast<const char*>(found);
    }
    return document.nextEscape < start + token.size();
}

/// Why a value is not what it was asked to be. Where the text is cut short, there is none to be of a wrong type.
DecodeError refusalOf(ondemand::value& value, simdjson::error_code code)
{
    return value.raw_json_token().empty() ? DecodeError::malformed : kindOf(code);
}

/// Deeper documents are nobody's records, and would exhaust the stack.
constexpr std::size_t maximumDepth = 64;
/// What the parser keeps track of: a value that is passed over may itself lie inside records of this depth.
constexpr std::size_t trackedDepth = 2 * maximumDepth;

constexpr std::size_t keptDocument = std::size_t{256} * 1024;

/// A parser for a document of this many bytes: the one that the thread keeps, so that the many documents of a stream do
/// not each take and give back memory, and its own for a long document or one that is read within another.
class BorrowedParser {
public:
    explicit BorrowedParser(std::size_t bytes) : m_isKept{bytes <= keptDocument}
    {
        if (m_isKept)
            m_parser = std::move(ofThread());
        if (!m_parser)
            m_parser = std::make_unique<ondemand::parser>();
    }
    BorrowedParser(const BorrowedParser&) = delete;
    BorrowedParser& operator=(const BorrowedParser&) = delete;
    ~BorrowedParser()
    {
        if (m_isKept)
            ofThread() = std::move(m_parser);
    }

    [[nodiscard]] ondemand::parser& parser() { return *m_parser; }

private:
    static std::unique_ptr<ondemand::parser>& ofThread()
    {
        static thread_local std::unique_ptr<ondemand::parser> kept;
        return kept;
    }

    bool m_isKept;
    std::unique_ptr<ondemand::parser> m_parser;
};

/// Reads a value of no interest with all that is in it, so that a malformed one is found out.
class Passage {
public:
    explicit Passage(Json::Detail::Document& document) : m_document(document) {}

    simdjson::error_code over(ondemand::value& value)
    {
        const auto token = value.raw_json_token();
        if (token.empty()) // the text ends where the value should stand
            return simdjson::INCOMPLETE_ARRAY_OR_OBJECT;
        if (m_depth == maximumDepth) // before the parser enters: it counts on being asked no deeper than it keeps track
            return simdjson::DEPTH_ERROR;
        switch (token.front()) {
        case '{':
            return overAll<ondemand::object>(value.get_object());
        case '[':
            return overAll<ondemand::array>(value.get_array());
        case '"':
            return isEscaped(token, m_document) ? value.get_string().error() : value.get_raw_json_string().error();
        case 't':
        case 'f':
            return value.get_bool().error();
        case 'n': {
            bool null = false;
            const auto error = value.is_null().get(null);
            return error || null ? error : simdjson::N_ATOM_ERROR;
        }
        default:
            return value.get_int64().error() ? value.get_double().error() : simdjson::SUCCESS;
        }
    }

private:
    static ondemand::value& valueIn(ondemand::value& element) { return element; }
    static ondemand::value& valueIn(ondemand::field& field) { return field.value(); }

    template <class Container>
    simdjson::error_code overAll(simdjson::simdjson_result<Container> found)
    {
        Container container;
        if (const auto error = std::move(found).get(container))
            return error;
        ++m_depth;
        for (auto each : container) {
            if (const auto error = each.error())
                return error;
            auto&& part = std::move(each).value_unsafe(); // where it lies: copying values takes much of the time
            if (const auto error = over(valueIn(part)))
                return error;
        }
        --m_depth;
        return simdjson::SUCCESS;
    }

    Json::Detail::Document& m_document;
    std::size_t m_depth = 0;
};

/// After so many elements the rest of a long array is worth a guess.
constexpr std::size_t elementsSeenForHint = 2048;

}

namespace Json::Detail {

bool Reader::isNull()
{
    bool null = false;
    return !valueOf(m_value).is_null().get(null) && null;
}

Outcome Reader::read(std::string& out)
{
    std::string_view text;
    if (const auto failed = read(text))
        return failed;
    out.assign(text);
    return std::nullopt;
}

Outcome Reader::read(std::string_view& out)
{
    auto& value = valueOf(m_value);
    const auto token = value.raw_json_token();
    if (token.starts_with('"') && !isEscaped(token, m_document)) {
        out = token.substr(1, token.rfind('"') - 1); // only blanks follow the closing mark
        return value.get_raw_json_string().error() ? Outcome{DecodeError::malformed} : std::nullopt;
    }
    std::string_view text;
    if (const auto error = value.get_string().get(text))
        return kindOf(error);
    auto* const place = const_cast<char*>(token.data()) + 1; // of `readDocument`'s text, which is used up
    std::memcpy(place, text.data(), text.size());            // never longer than what it was written as
    out = {place, text.size()};
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

Outcome Reader::pass()
{
    return Passage{m_document}.over(valueOf(m_value)) ? Outcome{DecodeError::malformed} : std::nullopt;
}

Outcome Reader::passText()
{
    auto& value = valueOf(m_value);
    const auto token = value.raw_json_token();
    if (!token.starts_with('"'))
        return token.empty() ? DecodeError::malformed : DecodeError::wrongType;
    const bool failed = isEscaped(token, m_document) ? value.get_string().error() != simdjson::SUCCESS
                                                     : value.get_raw_json_string().error() != simdjson::SUCCESS;
    return failed ? Outcome{DecodeError::malformed} : std::nullopt;
}

Outcome Reader::eachField(void* context, FieldVisitor visit)
{
    ondemand::object object;
    if (const auto error = valueOf(m_value).get_object().get(object))
        return refusalOf(valueOf(m_value), error);
    for (auto each : object) {
        if (const auto error = each.error())
            return kindOf(error);
        auto&& field = std::move(each).value_unsafe();
        const auto plain = plainKey(field.key().raw());
        std::string_view key = plain.value_or("");
        if (!plain) {
            if (const auto error = field.unescaped_key().get(key))
                return kindOf(error);
        }
        Reader value{&field.value(), m_document};
        if (const auto failed = visit(context, key, value))
            return failed;
    }
    return std::nullopt;
}

Outcome Reader::eachElement(void* context, ElementVisitor visit, SizeHint expect)
{
    ondemand::array array;
    if (const auto error = valueOf(m_value).get_array().get(array))
        return refusalOf(valueOf(m_value), error);
    const char* first = nullptr;
    std::size_t seen = 0;
    for (auto each : array) {
        if (const auto error = each.error())
            return kindOf(error);
        auto element = each.value_unsafe();
        const auto* const here = element.raw_json_token().data();
        if (seen++ == 0)
            first = here;
        if (seen == elementsSeenForHint) {
            const auto size = static_cast<std::size_t>(here - first) / (seen - 1) + 1;
            expect(context, seen + static_cast<std::size_t>(m_document.end - here) / size);
        }
        Reader value{&element, m_document};
        if (const auto failed = visit(context, value))
            return failed;
    }
    return std::nullopt;
}

Outcome readDocument(std::string& text, void* context, Reader::ElementVisitor visit)
{
    static_assert(padding >= simdjson::SIMDJSON_PADDING);
    BorrowedParser borrowed{text.size()};
    auto& parser = borrowed.parser();
    if (parser.capacity() < text.size() && parser.allocate(text.size(), trackedDepth))
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
    Document whole{.end = text.data() + size, .nextEscape = text.data()};
    Reader reader{&root, whole};
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
