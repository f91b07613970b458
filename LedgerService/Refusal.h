#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace LedgerService {

/// Why the service does not do what a request asks: the HTTP status, the code that clients know, and words for the
/// operator. The words never repeat what a request carried. A code decides the status: there is one table of both.
struct Refusal {
    int status;
    std::string_view code; // a `ServiceCode`
    std::string message;
    std::chrono::seconds retryAfter; // above zero: when it is worth trying again

    bool operator==(const Refusal&) const = default;

    /// The refusal of this code, with the status that goes with it. What is too much is worth trying again in an hour
    /// where nothing else is said.
    static Refusal of(std::string_view code, std::string message, std::chrono::seconds retryAfter = {});

private:
    Refusal(int givenStatus, std::string_view givenCode, std::string words, std::chrono::seconds later);
};

/// The JSON body of an error reply: {"error": {"code", "message"}}.
std::string errorBody(const Refusal& refusal);

}
