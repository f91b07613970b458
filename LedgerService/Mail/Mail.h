#pragma once

#include <string>

namespace LedgerService {

/// A letter of the service to one person, as plain text.
struct Mail {
    std::string to; // an address; empty: nobody gets it
    std::string locale;
    std::string subject; // one line
    std::string text;    // lines that end in "\n"

    bool operator==(const Mail&) const = default;
};

}
