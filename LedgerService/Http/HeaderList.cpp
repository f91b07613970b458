#include "LedgerService/Http/HeaderList.h"

#include <algorithm>

namespace LedgerService {

namespace {

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

char lowered(char each)
{
    return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
}

/// What stands before the sign, which is taken off the text with it.
std::string_view takeUntil(std::string_view& text, char sign)
{
    const auto end = std::min(text.find(sign), text.size());
    const auto taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return trimmed(taken);
}

/// "1", "0.5" or "0.125" in thousandths; 0 for other texts.
int weightOf(std::string_view text)
{
    constexpr std::size_t digitsAtMost = 3;
    const auto whole = text.substr(0, 1);
    auto digits = text.substr(whole.size());
    if ((whole != "0" && whole != "1") || (!digits.empty() && !digits.starts_with('.')))
        return 0;
    digits.remove_prefix(std::min<std::size_t>(1, digits.size()));
    const bool readable = digits.size() <= digitsAtMost &&
                          std::ranges::all_of(digits, [](char each) { return each >= '0' && each <= '9'; });
    int weight = whole == "1" ? HeaderList::Wish::most : 0;
    for (int place = HeaderList::Wish::most / 10; const char each : digits) {
        weight += place * (each - '0');
        place /= 10;
    }
    return readable && weight <= HeaderList::Wish::most ? weight : 0;
}

}

std::vector<std::string_view> HeaderList::elements(std::string_view list)
{
    std::vector<std::string_view> found;
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t at = 0; at <= list.size(); ++at) {
        if (at < list.size() && list[at] == '"')
            quoted = !quoted;
        if (at < list.size() && (quoted || list[at] != ','))
            continue;
        if (const auto element = trimmed(list.substr(start, at - start)); !element.empty())
            found.push_back(element);
        start = at + 1;
    }
    return found;
}

std::vector<HeaderList::Wish> HeaderList::wishes(std::string_view list)
{
    std::vector<Wish> found;
    for (auto rest : elements(list)) {
        Wish wish{.name = takeUntil(rest, ';')};
        while (!rest.empty()) {
            auto parameter = takeUntil(rest, ';');
            if (isSame(takeUntil(parameter, '='), "q"))
                wish.weight = weightOf(trimmed(parameter));
        }
        found.push_back(wish);
    }
    return found;
}

bool HeaderList::isSame(std::string_view one, std::string_view other)
{
    return std::ranges::equal(one, other, {}, lowered, lowered);
}

}
