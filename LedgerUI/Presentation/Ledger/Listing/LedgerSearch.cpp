#include "LedgerUI/Presentation/Ledger/Listing/LedgerSearch.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <utility>

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

/// The numbers of a word that is nothing but numbers with one and the same sign between them; else none.
std::vector<std::uint32_t> numbersOf(std::string_view word)
{
    const auto sign = word.find_first_not_of("0123456789");
    if (sign == std::string_view::npos || std::string_view{"-./"}.find(word[sign]) == std::string_view::npos)
        return {};
    std::vector<std::uint32_t> numbers;
    for (auto begin = std::size_t{0}; begin <= word.size();) {
        const auto end = std::min(word.find(word[sign], begin), word.size());
        const auto part = word.substr(begin, end - begin);
        std::uint32_t number = 0;
        const auto [stop, error] = std::from_chars(part.data(), part.data() + part.size(), number);
        if (part.empty() || part.size() > 4 || error != std::errc{} || stop != part.data() + part.size())
            return {};
        numbers.push_back(number);
        begin = end + 1;
    }
    return numbers;
}

bool isDay(std::uint32_t year, std::uint32_t month, std::uint32_t day)
{
    return std::chrono::year_month_day{std::chrono::year{static_cast<int>(year)}, std::chrono::month{month},
                                       std::chrono::day{day}}
        .ok();
}

bool holds(std::string_view text, std::string_view word)
{
    return text.find(word) != std::string_view::npos;
}

}

std::optional<LedgerDayPattern> dayPattern(std::string_view word, std::string_view locale)
{
    constexpr std::uint32_t leapYear = 2024;
    auto numbers = numbersOf(word);
    const bool hasYearFirst = !numbers.empty() && numbers.front() >= 1000;
    if (numbers.size() == 3) {
        if (!hasYearFirst)
            std::swap(numbers.front(), numbers.back());
        const auto number = numbers[0] * 10000 + numbers[1] * 100 + numbers[2];
        const bool names = numbers[0] >= 1000 && isDay(numbers[0], numbers[1], numbers[2]);
        return names ? std::optional{LedgerDayPattern{.first = number, .last = number}} : std::nullopt;
    }
    if (numbers.size() != 2)
        return std::nullopt;
    if (hasYearFirst && isDay(numbers[0], numbers[1], 1)) {
        const auto month = numbers[0] * 10000 + numbers[1] * 100;
        return LedgerDayPattern{.first = month + 1, .last = month + 31};
    }
    if (locale.starts_with("zh"))
        std::swap(numbers[0], numbers[1]);
    return !hasYearFirst && isDay(leapYear, numbers[1], numbers[0])
               ? std::optional{LedgerDayPattern{.ofEveryYear = numbers[1] * 100 + numbers[0]}}
               : std::nullopt;
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
        const auto day = dayPattern(word, book.locale());
        (day ? m_days : m_words)
            .push_back({word, amountDigits(word), named(book.titles()), named(book.categories()),
                        named(book.accounts()), named(book.members()), day});
        rest = TextFold::trimmed(rest.substr(end));
    }
}

bool LedgerSearch::accepts(std::uint32_t at) const
{
    const auto matches = [&](const Word& word) { return accepts(word, at); };
    return std::ranges::all_of(m_words, matches) && (m_days.empty() || std::ranges::any_of(m_days, matches));
}

bool LedgerSearch::accepts(const Word& word, std::uint32_t at) const
{
    const auto& entry = m_book->entry(at);
    if (word.day && word.day->holds(entry.day))
        return true;
    if (word.titles[entry.title] || word.members[entry.member])
        return true;
    if (entry.category != LedgerBook::none && word.categories[entry.category])
        return true;
    if (std::ranges::any_of(m_book->legs(at), [&](const auto& leg) { return word.accounts[leg.account]; }))
        return true;
    const auto text = m_book->text(at);
    return holds(text, word.folded) || (!word.digits.empty() && holds(text, word.digits));
}
