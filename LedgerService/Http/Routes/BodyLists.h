#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <type_traits>

#include <boost/mp11.hpp>

#include "LedgerCore/Domain/Json/JsonFields.h"

namespace LedgerService {

/// How long the lists of a body may be, whatever they hold: what a command does with a list is done while others wait
/// to write.
namespace BodyLists {

/// More than any company has accounts, members or categories.
inline constexpr std::size_t longest = 2'000;

template <class Value>
bool areShort(const Value&)
{
    return true;
}

template <class Value>
bool areShort(const std::map<std::string, Value, std::less<>>& values)
{
    return values.size() <= longest;
}

template <class Value>
    requires Json::Detail::isOptional<Value>
bool areShort(const Value& value);
template <Json::Detail::List Elements>
    requires(!std::is_same_v<Elements, std::string>)
bool areShort(const Elements& elements);
template <Json::Detail::Described Record>
bool areShort(const Record& record);

template <class Value>
    requires Json::Detail::isOptional<Value>
bool areShort(const Value& value)
{
    return !value || areShort(*value);
}

template <Json::Detail::List Elements>
    requires(!std::is_same_v<Elements, std::string>)
bool areShort(const Elements& elements)
{
    return elements.size() <= longest && std::ranges::all_of(elements, [](const auto& each) { return areShort(each); });
}

template <Json::Detail::Described Record>
bool areShort(const Record& record)
{
    bool all = true;
    boost::mp11::mp_for_each<Json::Detail::Fields<Record>>(
        [&](auto field) { all = all && areShort(record.*field.pointer); });
    return all;
}

}

}
