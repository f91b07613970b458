#include "LedgerCore/Domain/Contract.h"

#include <cstdio>
#include <cstdlib>

#include <fmt/core.h>

void breakPromise(std::string_view promise, std::source_location where)
{
    fmt::print(stderr, "{}:{}: broken promise: {}\n", where.file_name(), where.line(), promise);
    std::abort();
}
