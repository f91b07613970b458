#pragma once

#include <cstddef>
#include <string_view>

#include <QString>

/// How long a text may be, counted in characters as the service counts them: code points without the white space at
/// both ends.
namespace TextLimit {

/// Fields keep far more than any limit, so that nothing is cut that a person may want to shorten.
inline constexpr int longestKept = 100'000; // UTF-16 units

/// How many characters the text is too long.
std::size_t over(const QString& text, std::size_t limit);

/// Near the limit how many characters stand there, beyond it how many are too much; empty before.
QString message(const QString& text, std::size_t limit, std::string_view locale);

}
