#include "LedgerService/Http/Conditions.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

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

/// The elements of a list; a comma between quotation marks separates nothing.
std::vector<std::string_view> elements(std::string_view list)
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

char lowered(char each)
{
    return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
}

/// Whether the list has this element, in any case of letters; parameters after a semicolon are not looked at, but for
/// a weight of 0, which asks for the contrary.
bool lists(std::string_view list, std::string_view wanted)
{
    return std::ranges::any_of(elements(list), [&](std::string_view element) {
        const auto end = element.find(';');
        const auto parameters = end == std::string_view::npos ? std::string_view{} : trimmed(element.substr(end + 1));
        return std::ranges::equal(trimmed(element.substr(0, end)), wanted, {}, lowered) && parameters != "q=0";
    });
}

}

SnapshotAsked Conditions::snapshotAsked(const Request& request)
{
    SnapshotAsked asked;
    for (auto tag : elements(request.ifNoneMatch)) {
        if (tag.starts_with("W/")) // a proxy that compressed the reply says so; the state is the same
            tag.remove_prefix(2);
        asked.held.emplace_back(tag);
    }
    asked.delta = lists(request.instanceManipulations, "entries");
    return asked;
}

bool Conditions::prefersMinimal(const Request& request)
{
    return lists(request.prefer, "return=minimal");
}

}
