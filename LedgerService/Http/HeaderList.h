#pragma once

#include <string_view>
#include <vector>

namespace LedgerService {

/// Header fields whose value is a list, such as "gzip;q=0.5, *;q=0".
namespace HeaderList {

/// An element that wishes for something: its name, and how much it is wished for.
struct Wish {
    static constexpr int most = 1000;

    std::string_view name; // without parameters; in any case of letters
    int weight = most;     // thousandths; with 0, or a weight that cannot be read, the contrary is wished for
};

/// The elements as they stand, without blanks around them; a comma between quotation marks separates nothing.
std::vector<std::string_view> elements(std::string_view list);

/// The elements with their weights ("q"); other parameters are not looked at.
std::vector<Wish> wishes(std::string_view list);

/// Whether two names are the same in any case of letters.
bool isSame(std::string_view one, std::string_view other);

}

}
