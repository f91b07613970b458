#pragma once

#include <map>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Json/Json.h"

namespace LedgerService {

/// What tells one command from another: its name, what it is about and the values of its decoded fields by their
/// names. The order in which a record declares its fields plays no part, nor do fields that are not set, so that a
/// newer program knows the commands that an older one has carried out.
class CommandFingerprint {
public:
    template <class Record>
    static CommandFingerprint of(std::string_view name, const Record& command)
    {
        return {name, canonical(command), Json::encode(command)};
    }

    /// What is kept of a new command.
    [[nodiscard]] const std::string& text() const { return m_text; }

    /// Whether this was kept of the same command, also by a program that did not sort fields yet.
    [[nodiscard]] bool matches(std::string_view kept) const { return kept == m_text || kept == m_unsorted; }

private:
    CommandFingerprint(std::string_view name, std::string_view sorted, std::string_view declared);

    template <class Value>
    static std::string canonical(const Value& value)
    {
        if constexpr (Json::Detail::Described<Value>) {
            std::map<std::string_view, std::string> fields;
            boost::mp11::mp_for_each<Json::Detail::Fields<Value>>([&](auto field) {
                if (auto text = canonical(value.*field.pointer); !text.empty())
                    fields.emplace(field.name, std::move(text));
            });
            return enclosed(fields);
        } else if constexpr (Json::Detail::isOptional<Value>) {
            return value ? canonical(*value) : std::string{};
        } else {
            return Json::encode(value);
        }
    }

    template <class Element>
    static std::string canonical(const std::vector<Element>& elements)
    {
        std::string text = "[";
        for (const auto& each : elements)
            text += canonical(each) + ",";
        return text + "]";
    }

    static std::string enclosed(const std::map<std::string_view, std::string>& fields);

    std::string m_text;
    std::string m_unsorted;
};

}
