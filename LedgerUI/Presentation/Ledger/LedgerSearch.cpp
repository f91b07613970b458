#include "LedgerUI/Presentation/Ledger/LedgerSearch.h"

#include <algorithm>

#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

/// The digits of a text that looks like an amount in any language's notation; else nothing.
std::string amountDigits(std::string_view word)
{
    std::string digits;
    for (const char each : word) {
        if (each >= '0' && each <= '9')
            digits += each;
        else if (each != '.' && each != ',' && each != '-' && each != '+')
            return {};
    }
    return digits.size() == word.size() ? std::string{} : digits;
}

bool holds(std::string_view text, std::string_view word)
{
    return text.find(word) != std::string_view::npos;
}

}

LedgerSearch::LedgerSearch(const LedgerBook& book, std::string_view typed) : m_book(&book)
{
    const auto folded = TextFold::folded(typed);
    std::string_view rest = TextFold::trimmed(folded);
    while (!rest.empty()) {
        const auto end = std::min(rest.find_first_of(" \t\n"), rest.size());
        const std::string word{rest.substr(0, end)};
        const auto named = [&](const LedgerKeys& keys) {
            return keys.mask([&](std::uint32_t number) { return holds(keys.folded(number), word); });
        };
        m_words.push_back({word, amountDigits(word), named(book.titles()), named(book.categories()),
                           named(book.accounts()), named(book.members())});
        rest = TextFold::trimmed(rest.substr(end));
    }
}

bool LedgerSearch::accepts(std::uint32_t at) const
{
    return std::ranges::all_of(m_words, [&](const Word& word) { return accepts(word, at); });
}

bool LedgerSearch::accepts(const Word& word, std::uint32_t at) const
{
    const auto& entry = m_book->entry(at);
    if (word.titles[entry.title] || word.members[entry.member])
        return true;
    if (entry.category != LedgerBook::none && word.categories[entry.category])
        return true;
    if (std::ranges::any_of(m_book->legs(at), [&](const auto& leg) { return word.accounts[leg.account]; }))
        return true;
    const auto text = m_book->text(at);
    return holds(text, word.folded) || (!word.digits.empty() && holds(text, word.digits));
}
