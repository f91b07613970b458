#include "LedgerService/Storage/Schema/TableText.h"

#include <algorithm>
#include <array>

namespace LedgerService {

namespace {

constexpr std::string_view primaryKey = "PRIMARY KEY";

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \n\t";
    const auto begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view{}
                                           : text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

std::string firstWord(const std::string& item)
{
    return item.substr(0, item.find(' '));
}

}

std::vector<std::string> TableText::items(std::string_view statement)
{
    const auto begin = statement.find('(') + 1;
    std::vector<std::string> items(1);
    int depth = 0;
    for (const char each : statement.substr(begin, statement.rfind(')') - begin)) {
        depth += each == '(' ? 1 : each == ')' ? -1 : 0;
        if (each == ',' && depth == 0)
            items.emplace_back();
        else
            items.back() += each;
    }
    for (auto& item : items)
        item = std::string{trimmed(item)};
    return items;
}

bool TableText::isConstraint(std::string_view item)
{
    constexpr auto beginnings = std::to_array<std::string_view>({primaryKey, "UNIQUE", "FOREIGN KEY"});
    return std::ranges::any_of(beginnings, [&](std::string_view each) { return item.starts_with(each); });
}

std::vector<std::string> TableText::columns(std::string_view statement)
{
    std::vector<std::string> names;
    for (const auto& item : items(statement)) {
        if (!isConstraint(item))
            names.push_back(firstWord(item));
    }
    return names;
}

std::vector<std::string> TableText::key(std::string_view statement)
{
    for (const auto& item : items(statement)) {
        if (item.starts_with(primaryKey))
            return items(item);
        if (item.find(primaryKey) != std::string::npos)
            return {firstWord(item)};
    }
    return {};
}

}
