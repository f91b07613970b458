#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

class WordTable;

namespace LedgerCLI {

/// What the program says to people, in the four interface languages.
namespace CommandWords {

const WordTable& table();
std::string_view text(std::string_view key, std::string_view locale);
std::string filled(std::string_view key, std::string_view locale, std::initializer_list<std::string_view> arguments);

}

}
