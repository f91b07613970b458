#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>

#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// Keeps guessing slow.
namespace AttemptLimit {

/// What an attempt counts towards.
struct Scope {
    std::string name;
    int limit = 0;
    std::chrono::seconds window{}; // from the first attempt on
};

/// Counts an attempt towards each scope, or refuses it when one of them is used up. A refusal writes nothing and waits
/// for no writer. Expects no transaction to be open.
std::optional<Refusal> whyNotNow(const Service& service, std::span<const Scope> scopes);

}

}
