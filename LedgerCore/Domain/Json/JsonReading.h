#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <boost/mp11.hpp>

#include "LedgerCore/Domain/Json/JsonFields.h"

namespace Json {

/// A number that does not fit its field is of the wrong type.
enum class DecodeError { malformed, missingField, wrongType };

/// A value that must be there and be a faultless `Value`, but whose content is of no interest. It cannot be written.
template <class Value>
struct Unread {};

}

/// How each type of value is read.
namespace Json::Detail {

using Outcome = std::optional<DecodeError>; // nothing when the value was read

/// The text being read.
struct Document {
    const char* end = nullptr;
    const char* nextEscape = nullptr; // no backslash stands between the value being read and here
};

/// One value of the document being read. Each value is read once.
class Reader {
public:
    using FieldVisitor = Outcome (*)(void* context, std::string_view key, Reader& value);
    using ElementVisitor = Outcome (*)(void* context, Reader& value);
    using SizeHint = void (*)(void* context, std::size_t elements);

    Reader(void* value, Document& document) : m_value(value), m_document(document) {}

    [[nodiscard]] bool isNull();
    Outcome read(std::string& out);
    /// An escaped text is written out in its own place.
    Outcome read(std::string_view& out);
    Outcome read(std::int64_t& out);
    Outcome read(bool& out);
    /// Passes over a value, checking that it and all in it is well-formed.
    Outcome pass();
    /// The same for a value that has to be a text.
    Outcome passText();
    Outcome eachField(void* context, FieldVisitor visit);
    /// Tells a long array's likely size once, so that it need not grow step by step.
    Outcome eachElement(void* context, ElementVisitor visit, SizeHint expect);

private:
    void* m_value;
    Document& m_document;
};

/// Parses `text` and hands its root to `visit`. The text is used up.
Outcome readDocument(std::string& text, void* context, Reader::ElementVisitor visit);

inline Outcome readValue(Reader& in, std::string& out)
{
    return in.read(out);
}

inline Outcome readValue(Reader& in, std::string_view& out)
{
    return in.read(out);
}

inline Outcome readValue(Reader& in, Unread<std::string>& /*out*/)
{
    return in.passText();
}

inline Outcome readValue(Reader& in, std::int64_t& out)
{
    return in.read(out);
}

inline Outcome readValue(Reader& in, bool& out)
{
    return in.read(out);
}

inline Outcome readValue(Reader& in, int& out)
{
    std::int64_t wide = 0;
    if (const auto failed = in.read(wide))
        return failed;
    if (wide < std::numeric_limits<int>::min() || wide > std::numeric_limits<int>::max())
        return DecodeError::wrongType;
    out = static_cast<int>(wide);
    return std::nullopt;
}

template <class Number>
    requires std::is_arithmetic_v<Number>
Outcome readValue(Reader& in, Unread<Number>& /*out*/)
{
    Number value{};
    return readValue(in, value);
}

template <List Elements>
Outcome readValue(Reader& in, Elements& out);
template <class Value>
Outcome readValue(Reader& in, std::map<std::string, Value, std::less<>>& out);
template <Described Record>
Outcome readValue(Reader& in, Record& out);
template <List Elements>
Outcome readValue(Reader& in, Unread<Elements>& out);
template <class Value>
Outcome readValue(Reader& in, Unread<std::map<std::string, Value, std::less<>>>& out);
template <Described Record>
Outcome readValue(Reader& in, Unread<Record>& out);

template <class Value>
Outcome readValue(Reader& in, Unread<std::optional<Value>>& /*out*/)
{
    Unread<Value> value;
    return in.isNull() ? std::nullopt : readValue(in, value);
}

template <List Elements>
Outcome readValue(Reader& in, Unread<Elements>& /*out*/)
{
    const auto pass = [](void* /*context*/, Reader& value) {
        Unread<typename Elements::value_type> element;
        return readValue(value, element);
    };
    return in.eachElement(nullptr, pass, [](void* /*context*/, std::size_t /*elements*/) {});
}

template <class Value>
Outcome readValue(Reader& in, Unread<std::map<std::string, Value, std::less<>>>& /*out*/)
{
    return in.eachField(nullptr, [](void* /*context*/, std::string_view /*key*/, Reader& field) {
        Unread<Value> value;
        return readValue(field, value);
    });
}

template <class Value>
Outcome readValue(Reader& in, std::optional<Value>& out)
{
    out.reset();
    return in.isNull() ? std::nullopt : readValue(in, out.emplace());
}

template <List Elements>
Outcome readValue(Reader& in, Elements& out)
{
    out.clear();
    return in.eachElement(
        &out,
        [](void* context, Reader& value) { return readValue(value, static_cast<Elements*>(context)->emplace_back()); },
        [](void* context, std::size_t elements) { static_cast<Elements*>(context)->reserve(elements); });
}

template <class Value>
Outcome readValue(Reader& in, std::map<std::string, Value, std::less<>>& out)
{
    out.clear();
    using Map = std::map<std::string, Value, std::less<>>;
    return in.eachField(&out, [](void* context, std::string_view key, Reader& value) {
        return readValue(value, (*static_cast<Map*>(context))[std::string{key}]);
    });
}

/// What the codec knows about the fields of a record, one row a field in declaration order. They are read into a
/// `Record`, or into an `Unread<Record>`.
template <class Record, class Target>
struct FieldTable {
    struct Row {
        std::string_view name;
        bool required = true;
        Outcome (*read)(Reader&, Target&) = nullptr;
    };
    static constexpr std::size_t size = boost::mp11::mp_size<Fields<Record>>::value;
    static_assert(size <= 64, "one bit a field");

    static constexpr std::array<Row, size> rows = [] {
        std::array<Row, size> all{};
        std::size_t at = 0;
        boost::mp11::mp_for_each<Fields<Record>>([&](auto field) {
            using Type = std::remove_cvref_t<decltype(std::declval<Record&>().*field.pointer)>;
            all[at++] = {field.name, !isOptional<Type>, [](Reader& in, [[maybe_unused]] Target& target) {
                             if constexpr (std::is_same_v<Target, Record>) {
                                 return readValue(in, target.*decltype(field)::pointer);
                             } else {
                                 Unread<Type> value;
                                 return readValue(in, value);
                             }
                         }};
        });
        return all;
    }();

    static constexpr std::uint64_t required = [] {
        std::uint64_t bits = 0;
        for (std::size_t at = 0; at < size; ++at)
            bits |= rows[at].required ? std::uint64_t{1} << at : 0;
        return bits;
    }();
};

template <Described Record, class Target>
Outcome readFields(Reader& in, Target& out)
{
    using Table = FieldTable<Record, Target>;
    struct State {
        Target& target;
        std::uint64_t seen = 0;
        std::size_t next = 0; // writers keep the order of the fields, so the next one is the likeliest
    } state{out};
    const auto failed = in.eachField(&state, [](void* context, std::string_view key, Reader& value) -> Outcome {
        auto& now = *static_cast<State*>(context);
        for (std::size_t tried = 0; tried < Table::size; ++tried) {
            const auto at = (now.next + tried) % Table::size;
            if (Table::rows[at].name != key)
                continue;
            now.next = at + 1;
            now.seen |= std::uint64_t{1} << at;
            return Table::rows[at].read(value, now.target);
        }
        return value.pass();
    });
    if (failed)
        return failed;
    return (state.seen & Table::required) == Table::required ? std::nullopt : Outcome{DecodeError::missingField};
}

template <Described Record>
Outcome readValue(Reader& in, Record& out)
{
    return readFields<Record>(in, out);
}

template <Described Record>
Outcome readValue(Reader& in, Unread<Record>& out)
{
    return readFields<Record>(in, out);
}

}
