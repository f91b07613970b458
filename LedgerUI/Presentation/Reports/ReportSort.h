#pragma once

#include <map>
#include <string>

/// The column that a report's table is sorted by.
struct ReportSort {
    enum class Direction { ascending, descending };

    std::string column;
    Direction direction = Direction::ascending;

    bool operator==(const ReportSort&) const = default;
};

/// By the ids of the tables. Those without one keep the order of the books.
using ReportSorts = std::map<std::string, ReportSort, std::less<>>;
