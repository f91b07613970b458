#pragma once

#include <string>
#include <string_view>

namespace LedgerService {

namespace LetterCase {

/// The text as `lower` of a database makes it of a column: letters of other alphabets stay as they are.
inline std::string lower(std::string_view text)
{
    std::string lowered{text};
    for (auto& each : lowered) {
        if (each >= 'A' && each <= 'Z')
            each = static_cast<char>(each - 'A' + 'a');
    }
    return lowered;
}

}

}
