#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

/// Takes the statements that make tables apart.
namespace TableText {

/// What stands between the outermost brackets: the parts between the commas that stand in no further brackets.
std::vector<std::string> items(std::string_view statement);

/// Whether a part of the statement is about several columns, and not one of them.
bool isConstraint(std::string_view item);

std::vector<std::string> columns(std::string_view statement);

/// The columns of the primary key.
std::vector<std::string> key(std::string_view statement);

}

}
