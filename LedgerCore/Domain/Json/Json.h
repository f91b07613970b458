#pragma once

#include <cstddef>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Json/JsonReading.h"
#include "LedgerCore/Domain/Json/JsonWriting.h"

/// The one codec between records and JSON texts. A record's fields are those it describes with Boost.Describe:
/// a missing required field or a wrong type fails the whole document, null and absent both mean not set, unknown
/// keys are skipped, unset optionals are left out when writing, and integers never pass through a double.
namespace Json {

template <class Record>
std::expected<Record, DecodeError> decode(std::string_view text);

/// The same for a text that nobody needs afterwards: not copied when it has room for `padding` more bytes.
template <class Record>
std::expected<Record, DecodeError> consume(std::string text);

/// The same for a record whose `std::string_view`s point into `text`, which is used up and must neither move nor change
/// as long as the record is in use. Saves a long document's texts from being copied.
template <class Record>
std::expected<Record, DecodeError> view(std::string& text);

/// The same into a record that stands: a list keeps the room that was reserved for it. What a failure leaves in the
/// record means nothing.
template <class Record>
Detail::Outcome viewInto(Record& record, std::string& text);

/// How many bytes past a text's end the reader may look at.
inline constexpr std::size_t padding = 64;

template <class Record>
std::string encode(const Record& record);

namespace Detail {

/// Whether a record holds texts of the document that it was read from.
template <class Type>
inline constexpr bool pointsIntoText = std::is_same_v<Type, std::string_view>;
template <class Type>
inline constexpr bool pointsIntoText<std::optional<Type>> = pointsIntoText<Type>;
template <List Elements>
inline constexpr bool pointsIntoText<Elements> = pointsIntoText<typename Elements::value_type>;
template <class Type>
inline constexpr bool pointsIntoText<std::map<std::string, Type, std::less<>>> = pointsIntoText<Type>;
template <Described Record>
inline constexpr bool pointsIntoText<Record> = [] {
    bool any = false;
    boost::mp11::mp_for_each<Fields<Record>>([&](auto field) {
        any = any || pointsIntoText<std::remove_cvref_t<decltype(std::declval<Record&>().*field.pointer)>>;
    });
    return any;
}();

}

template <class Record>
std::expected<Record, DecodeError> decode(std::string_view text)
{
    std::string copy;
    copy.reserve(text.size() + padding);
    copy = text;
    return consume<Record>(std::move(copy));
}

template <class Record>
std::expected<Record, DecodeError> consume(std::string text)
{
    static_assert(!Detail::pointsIntoText<Record>, "its texts would not outlive the call");
    return view<Record>(text);
}

template <class Record>
std::expected<Record, DecodeError> view(std::string& text)
{
    Record record{};
    if (const auto failed = viewInto(record, text))
        return std::unexpected(*failed);
    return record;
}

template <class Record>
Detail::Outcome viewInto(Record& record, std::string& text)
{
    return Detail::readDocument(text, &record, [](void* context, Detail::Reader& root) {
        return Detail::readValue(root, *static_cast<Record*>(context));
    });
}

template <class Record>
std::string encode(const Record& record)
{
    std::string out;
    Detail::writeValue(out, record);
    return out;
}

}
