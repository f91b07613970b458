#pragma once

#include <string>
#include <string_view>

/// Text as people compare it. All functions take and give UTF-8.
namespace TextFold {

/// Without leading and trailing white space and line ends, Unicode's own included.
std::string_view trimmed(std::string_view text);

/// Lower case without diacritics, so that "Điện" is found by "dien". Bytes that are not UTF-8 stay as they are.
std::string folded(std::string_view text);

/// Whether no reader could tell the texts apart: "é" is one sign or two, depending on who typed it.
bool areSame(std::string_view left, std::string_view right);

/// Whether the text is well-formed UTF-8.
bool isValidUtf8(std::string_view text);

/// How many code points the text holds.
std::size_t length(std::string_view text);

}
