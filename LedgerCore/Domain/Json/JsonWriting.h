#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/mp11.hpp>

#include "LedgerCore/Domain/Json/JsonFields.h"

/// How each type of value is written.
namespace Json::Detail {

void writeString(std::string& out, std::string_view text);
void writeInteger(std::string& out, std::int64_t number);

inline void writeValue(std::string& out, const std::string& text)
{
    writeString(out, text);
}

inline void writeValue(std::string& out, std::int64_t number)
{
    writeInteger(out, number);
}

inline void writeValue(std::string& out, int number)
{
    writeInteger(out, number);
}

inline void writeValue(std::string& out, bool truth)
{
    out += truth ? "true" : "false";
}

template <List Elements>
void writeValue(std::string& out, const Elements& elements);
template <class Value>
void writeValue(std::string& out, const std::map<std::string, Value, std::less<>>& values);
template <Described Record>
void writeValue(std::string& out, const Record& record);

template <List Elements>
void writeValue(std::string& out, const Elements& elements)
{
    out += '[';
    bool first = true;
    for (const auto& element : elements) {
        if (!std::exchange(first, false))
            out += ',';
        writeValue(out, element);
    }
    out += ']';
}

template <class Value>
void writeValue(std::string& out, const std::map<std::string, Value, std::less<>>& values)
{
    out += '{';
    bool first = true;
    for (const auto& [key, value] : values) {
        if (!std::exchange(first, false))
            out += ',';
        writeString(out, key);
        out += ':';
        writeValue(out, value);
    }
    out += '}';
}

template <class Value>
void writeField(std::string& out, bool& first, std::string_view name, const Value& value)
{
    if constexpr (isOptional<Value>) {
        if (value)
            writeField(out, first, name, *value);
    } else {
        out += std::exchange(first, false) ? "\"" : ",\"";
        out += name;
        out += "\":";
        writeValue(out, value);
    }
}

template <Described Record>
void writeValue(std::string& out, const Record& record)
{
    out += '{';
    bool first = true;
    boost::mp11::mp_for_each<Fields<Record>>(
        [&](auto field) { writeField(out, first, field.name, record.*field.pointer); });
    out += '}';
}

}
