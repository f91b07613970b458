#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Text/TextFold.h"

/// Distinct texts of one sort, numbered in the order of their appearance, each with what it is called and the folded
/// text that a search finds it by.
class LedgerKeys {
public:
    struct Names {
        std::string shown;
        std::string folded;
    };
    static Names named(std::string shown)
    {
        auto folded = TextFold::folded(shown);
        return {std::move(shown), std::move(folded)};
    }

    /// The number of `id`; `name()` is asked only when it is new.
    template <class Name>
    std::uint32_t number(std::string_view id, Name&& name)
    {
        if (const auto found = m_numbers.find(id); found != m_numbers.end())
            return found->second;
        const auto fresh = static_cast<std::uint32_t>(m_ids.size());
        m_ids.emplace_back(id);
        m_names.push_back(name());
        m_numbers.emplace(id, fresh);
        return fresh;
    }

    [[nodiscard]] std::size_t size() const { return m_ids.size(); }
    [[nodiscard]] const std::string& id(std::uint32_t number) const { return m_ids[number]; }
    [[nodiscard]] const std::string& shown(std::uint32_t number) const { return m_names[number].shown; }
    [[nodiscard]] const std::string& folded(std::uint32_t number) const { return m_names[number].folded; }
    [[nodiscard]] bool contains(std::string_view id) const { return m_numbers.find(id) != m_numbers.end(); }
    /// The number of `id`, where it has appeared.
    [[nodiscard]] std::optional<std::uint32_t> find(std::string_view id) const
    {
        const auto found = m_numbers.find(id);
        return found == m_numbers.end() ? std::nullopt : std::optional{found->second};
    }

    /// For each number whether `accepts(number)` holds.
    template <class Accepts>
    [[nodiscard]] std::vector<bool> mask(Accepts&& accepts) const
    {
        std::vector<bool> result(size());
        for (std::uint32_t each = 0; each < size(); ++each)
            result[each] = accepts(each);
        return result;
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };

    std::vector<std::string> m_ids;
    std::vector<Names> m_names;
    std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> m_numbers;
};
