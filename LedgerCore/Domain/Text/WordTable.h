#pragma once

#include <array>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// One text in the four interface languages.
struct LanguageTexts {
    std::string_view chinese;
    std::string_view indonesian;
    std::string_view vietnamese;
    std::string_view english;

    /// The text for a locale, by its plain prefix: "id", "vi", "en", anything else Chinese.
    [[nodiscard]] std::string_view text(std::string_view locale) const;

    enum class Flaw { languageMissing, placeholdersDiffer };
    /// What a person of one of the languages would miss; nothing for sound texts.
    [[nodiscard]] constexpr std::optional<Flaw> flaw() const;
};

/// One message of a table. A row in which a person of one language would miss something does not compile.
struct WordRow : LanguageTexts {
    std::string_view key;

    consteval WordRow(std::string_view rowKey, std::string_view inChinese, std::string_view inIndonesian,
                      std::string_view inVietnamese, std::string_view inEnglish)
        : LanguageTexts{inChinese, inIndonesian, inVietnamese, inEnglish}, key{rowKey}
    {
        if (flaw() == Flaw::languageMissing)
            aLanguageIsMissing();
        if (flaw() == Flaw::placeholdersDiffer)
            placeholdersDifferBetweenLanguages();
    }

private:
    // Never defined: the compiler names the one that a flawed row would call.
    static void aLanguageIsMissing();
    static void placeholdersDifferBetweenLanguages();
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

constexpr std::optional<LanguageTexts::Flaw> LanguageTexts::flaw() const
{
    // How often a text holds each of "%1" to "%9"; any other percent sign is one.
    const auto placeholders = [](std::string_view text) {
        std::array<int, 9> found{};
        for (auto at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
            if (at + 1 < text.size() && text[at + 1] >= '1' && text[at + 1] <= '9')
                ++found[static_cast<std::size_t>(text[at + 1] - '1')];
        }
        return found;
    };
    if (chinese.empty() || indonesian.empty() || vietnamese.empty() || english.empty())
        return Flaw::languageMissing;
    const auto wanted = placeholders(english);
    if (placeholders(chinese) != wanted || placeholders(indonesian) != wanted || placeholders(vietnamese) != wanted)
        return Flaw::placeholdersDiffer;
    return std::nullopt;
}
