#pragma once

#include <string_view>

class WordTable;

/// What the user reads about an import file, by the key of an issue.
namespace LedgerImportWords {

const WordTable& table();

/// The text of a key, or the key itself when there is none.
std::string_view text(std::string_view key, std::string_view locale);

}
