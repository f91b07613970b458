#pragma once

#include <algorithm>
#include <functional>
#include <string_view>
#include <tuple>
#include <vector>

/// Puts records in the order of lists: the latest day first, of one day what was recorded last.
template <class Record>
void sortLatestFirst(std::vector<const Record*>& records)
{
    std::ranges::sort(records, std::ranges::greater{}, [](const Record* each) {
        return std::tuple<std::string_view, std::string_view, std::string_view>{each->date, each->createdAt, each->id};
    });
}
