#pragma once

#include <vector>

/// How the rows that a table shows become those that it shows next.
struct RowChange {
    enum class Kind {
        patch,      // the rows that stay keep their order; others went and came between them
        reorder,    // the same rows in another order
        replacement // more than is worth telling row by row
    };
    struct Range {
        int first = 0;
        int last = 0;

        bool operator==(const Range&) const = default;
    };

    Kind kind = Kind::replacement;
    std::vector<int> moved;        // for each row of before its row now, or -1
    std::vector<Range> gone = {};  // rows of before, for a patch
    std::vector<Range> fresh = {}; // rows of now, for a patch
};

/// The change that takes each row of before to `moved`, of `count` rows now.
RowChange rowChange(std::vector<int> moved, int count);
