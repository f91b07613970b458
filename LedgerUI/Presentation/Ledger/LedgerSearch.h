#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

/// What was typed into the search field, made ready for one book: every word must be found somewhere in the entry's
/// note, title, category names, accounts, member, reference or amounts, whatever its case and diacritics.
class LedgerSearch {
public:
    LedgerSearch(const LedgerBook& book, std::string_view typed);

    [[nodiscard]] bool isEmpty() const { return m_words.empty(); }
    [[nodiscard]] bool accepts(std::uint32_t at) const;

private:
    struct Word {
        std::string folded;
        std::string digits; // a typed amount without its separators; else empty
        std::vector<bool> titles;
        std::vector<bool> categories;
        std::vector<bool> accounts;
        std::vector<bool> members;
    };
    [[nodiscard]] bool accepts(const Word& word, std::uint32_t at) const;

    const LedgerBook* m_book;
    std::vector<Word> m_words;
};
