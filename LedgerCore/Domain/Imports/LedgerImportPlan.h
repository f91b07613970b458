#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

/// Something in an import file that keeps it from being imported.
struct LedgerImportIssue {
    int line = 1;                           // record of the file, the header being 1
    std::string message;                    // a key of `LedgerImportWords`
    std::optional<std::string> value = {};  // the cell found fault with
    std::optional<std::size_t> column = {}; // and its place among the template's columns

    bool operator==(const LedgerImportIssue&) const = default;
};
BOOST_DESCRIBE_STRUCT(LedgerImportIssue, (), (line, message, value))

/// What an import file asks to record. Anything but an empty list of issues means that nothing is sent.
struct LedgerImportPlan {
    std::vector<TransactionInput> inputs; // one for each faultless row, in file order
    std::vector<int> lines;               // the record of the file that each input was read from
    std::vector<LedgerImportIssue> issues;
    bool malformed = false; // the file as a whole could not be read, so no row was checked

    bool operator==(const LedgerImportPlan&) const = default;
};
BOOST_DESCRIBE_STRUCT(LedgerImportPlan, (), (inputs, issues, malformed))
