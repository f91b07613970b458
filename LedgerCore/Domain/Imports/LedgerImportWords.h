#pragma once

#include <string_view>

class WordTable;
struct LedgerImportIssue;

/// What the user reads about an import file, by the key of an issue.
namespace LedgerImportWords {

const WordTable& table();

/// The text of an issue. A header whose columns are separated otherwise has one of its own.
std::string_view text(const LedgerImportIssue& issue, std::string_view locale);

/// The text of a key, or the key itself when there is none.
std::string_view text(std::string_view key, std::string_view locale);

}
