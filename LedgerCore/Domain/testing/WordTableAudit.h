#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Text/WordTable.h"

/// What is wrong with a table of texts, row by row: an empty column, placeholders that differ from the English ones.
inline std::vector<std::string> auditWords(const WordTable& table)
{
    const auto placeholders = [](std::string_view text) {
        std::multiset<char> found;
        for (auto at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1))
            if (at + 1 < text.size() && text[at + 1] >= '1' && text[at + 1] <= '9') // else a percent sign
                found.insert(text[at + 1]);
        return found;
    };
    std::vector<std::string> flaws;
    for (const auto& row : table.rows()) {
        for (const auto text : {row.chinese, row.indonesian, row.vietnamese, row.english}) {
            if (text.empty())
                flaws.push_back(std::string{row.key} + ": a language is missing");
            else if (placeholders(text) != placeholders(row.english))
                flaws.push_back(std::string{row.key} + ": other placeholders in " + std::string{text});
        }
    }
    return flaws;
}
