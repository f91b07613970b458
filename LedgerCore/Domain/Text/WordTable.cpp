#include "LedgerCore/Domain/Text/WordTable.h"

#include "LedgerCore/Domain/Contract.h"

std::string_view LanguageTexts::text(std::string_view locale) const
{
    if (locale.starts_with("id"))
        return indonesian;
    if (locale.starts_with("vi"))
        return vietnamese;
    if (locale.starts_with("en"))
        return english;
    return chinese;
}

WordTable::WordTable(std::initializer_list<WordRow> rows) : m_rows(rows)
{
    for (std::size_t at = 0; at < m_rows.size(); ++at) {
        const bool fresh = m_index.emplace(m_rows[at].key, at).second;
        require(fresh, "a word table holds each key once");
    }
}

std::string_view WordTable::text(std::string_view key, std::string_view locale) const
{
    const auto found = m_index.find(key);
    return found == m_index.end() ? key : m_rows[found->second].text(locale);
}

std::string WordTable::filled(std::string_view key, std::string_view locale,
                              std::initializer_list<std::string_view> arguments) const
{
    const auto pattern = text(key, locale);
    std::string result;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const bool placeholder =
            pattern[at] == '%' && at + 1 < pattern.size() && pattern[at + 1] >= '1' && pattern[at + 1] <= '9';
        const auto index = placeholder ? static_cast<std::size_t>(pattern[at + 1] - '1') : arguments.size();
        if (index < arguments.size()) {
            result += *(arguments.begin() + index);
            ++at;
        } else {
            result += pattern[at];
        }
    }
    return result;
}
