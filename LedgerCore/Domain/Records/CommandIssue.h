#pragma once

#include <string>

/// What every built command carries of its moment: the bookkeeping day and the key that makes a retry harmless.
struct CommandIssue {
    std::string date;           // "YYYY-MM-DD"
    std::string idempotencyKey; // fresh for each command built
};
