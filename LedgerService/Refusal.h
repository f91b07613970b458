#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace LedgerService {

/// Why the service does not do what a request asks: the HTTP status, the code that clients know, and words for the
/// operator. The words never repeat what a request carried.
struct Refusal {
    int status = 400;
    std::string_view code; // a `ServiceCode`
    std::string message;
    std::chrono::seconds retryAfter{0}; // above zero: when it is worth trying again

    bool operator==(const Refusal&) const = default;

    /// The refusal of this code, with the status that goes with it.
    static Refusal of(std::string_view code, std::string message);
};

/// The JSON body of an error reply: {"error": {"code", "message"}}.
std::string errorBody(const Refusal& refusal);

}
