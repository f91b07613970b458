#include "LedgerCore/Domain/Contract.h"

#include <cstdio>
#include <cstdlib>

#include <fmt/core.h>

void require(bool held, std::string_view promise, std::source_location where)
{
    if (held)
        return;
    fmt::print(stderr, "{}:{}: broken promise: {}\n", where.file_name(), where.line(), promise);
    std::abort();
}
