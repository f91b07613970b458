#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

/// The days that a word names, as numbers such as 20261120; a day without its year is one of every year.
struct LedgerDayPattern {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::uint32_t ofEveryYear = 0; // month and day as 1120; 0 where the year is named

    [[nodiscard]] bool holds(std::uint32_t day) const
    {
        return ofEveryYear > 0 ? day % 10000 == ofEveryYear : day >= first && day <= last;
    }
    bool operator==(const LedgerDayPattern&) const = default;
};

/// Nothing for a word that names no day. The day stands before the month, without a year in Chinese behind it; with the
/// year in front everything is the other way around.
std::optional<LedgerDayPattern> dayPattern(std::string_view word, std::string_view locale);

/// What was typed into the search field, made ready for one book: every word must be found somewhere in the entry's
/// note, title, category names, accounts, member, reference or amounts, whatever its case and diacritics. Words that
/// name a day ("2026-11-20", "20.11.2026", "20/11") or a month ("2026-11") may be found in the entry's day instead, and
/// of several days one is enough.
class LedgerSearch {
public:
    LedgerSearch(const LedgerBook& book, std::string_view typed);

    [[nodiscard]] bool isEmpty() const { return m_words.empty() && m_days.empty(); }
    [[nodiscard]] bool accepts(std::uint32_t at) const;

private:
    struct Word {
        std::string folded;
        std::string digits; // a typed amount without its separators; else empty
        std::vector<bool> titles;
        std::vector<bool> categories;
        std::vector<bool> accounts;
        std::vector<bool> members;
        std::optional<LedgerDayPattern> day = {};
    };
    [[nodiscard]] bool accepts(const Word& word, std::uint32_t at) const;

    const LedgerBook* m_book;
    std::vector<Word> m_words;
    std::vector<Word> m_days; // those of the words that name one
};
