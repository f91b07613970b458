#include "LedgerService/Storage/Sql/Columns.h"

#include <iterator>

#include <fmt/core.h>
#include <fmt/ranges.h>

namespace LedgerService {

std::string Detail::selectText(const std::vector<std::string_view>& names, std::string_view rest)
{
    return fmt::format("SELECT {} {}", fmt::join(names, ", "), rest);
}

std::string Detail::updateText(std::string_view table, const std::vector<std::string_view>& names,
                               std::string_view where)
{
    std::string assignments;
    for (const auto name : names)
        assignments += fmt::format("{}{} = :{}", assignments.empty() ? "" : ", ", name, name);
    return fmt::format("UPDATE {} SET {} WHERE {}", table, assignments, where);
}

void Detail::appendStored(std::string& stored, std::string_view value)
{
    fmt::format_to(std::back_inserter(stored), "{}:", value.size());
    stored += value;
}

void Detail::appendOptional(std::string& stored, const std::optional<std::string>& value)
{
    if (value)
        appendStored(stored, std::string_view{*value});
    else
        stored += '-';
}

std::string Detail::insertText(std::string_view table, const std::vector<std::string_view>& names,
                               std::initializer_list<std::pair<std::string_view, std::string_view>> others)
{
    std::string columns;
    std::string values;
    for (const auto name : names) {
        columns += fmt::format("{}, ", name);
        values += fmt::format(":{}, ", name);
    }
    for (const auto& [name, sql] : others) {
        columns += fmt::format("{}, ", name);
        values += fmt::format("{}, ", sql);
    }
    columns.resize(columns.size() - 2); // the last comma
    values.resize(values.size() - 2);
    return fmt::format("INSERT INTO {} ({}) VALUES ({})", table, columns, values);
}

}
