#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

struct Dialect;

/// The schema as all its steps have made it, for databases that begin with the newest one.
namespace NewestSchema {

/// What a statement of the schema makes.
struct Part {
    std::string kind; // "table", "index", "trigger" or "function"
    std::string name;
    std::string statement;
};

/// The parts, each after those that it refers to.
std::vector<Part> parts(const Dialect& dialect);

struct Table {
    std::string name;
    std::vector<std::string> columns;
    std::vector<std::string> key; // the columns that tell its rows apart
};

/// The tables, each after those that its rows refer to.
const std::vector<Table>& tables();

}

}
