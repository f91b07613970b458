#pragma once

#include <array>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// One message in the four interface languages.
struct WordRow {
    std::string_view key;
    std::string_view chinese;
    std::string_view indonesian;
    std::string_view vietnamese;
    std::string_view english;

    /// The text for a locale, by its plain prefix: "id", "vi", "en", anything else Chinese.
    [[nodiscard]] std::string_view text(std::string_view locale) const;
};

/// A constant table of messages; build one per concept as a function-local or namespace-level constant.
class WordTable {
public:
    WordTable(std::initializer_list<WordRow> rows);

    /// The text of a key, or the key itself when the table does not hold it.
    [[nodiscard]] std::string_view text(std::string_view key, std::string_view locale) const;

    /// The text with "%1" to "%9" replaced by `arguments`; a placeholder without an argument stays.
    [[nodiscard]] std::string filled(std::string_view key, std::string_view locale,
                                     std::initializer_list<std::string_view> arguments) const;

    [[nodiscard]] bool contains(std::string_view key) const { return m_index.contains(key); }
    [[nodiscard]] std::span<const WordRow> rows() const { return m_rows; }

private:
    std::vector<WordRow> m_rows;
    std::unordered_map<std::string_view, std::size_t> m_index;
};
