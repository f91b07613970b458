#pragma once

#include <optional>
#include <string>
#include <type_traits>

#include <boost/describe.hpp>

/// What the codec sees of a record.
namespace Json::Detail {

template <class Type>
inline constexpr bool isOptional = false;
template <class Type>
inline constexpr bool isOptional<std::optional<Type>> = true;

template <class Type>
using Fields = boost::describe::describe_members<Type, boost::describe::mod_any_access>;

/// A list of records of any length, such as a `std::vector`.
template <class Type>
concept List = requires(Type list) {
    typename Type::value_type;
    list.emplace_back();
    list.reserve(1);
    list.clear();
};

template <class Type>
concept Described = boost::describe::has_describe_members<Type>::value && !std::is_same_v<Type, std::string>;

}
