#pragma once

#include <optional>
#include <string_view>

#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

class Connection;

/// Keeps guessing slow.
namespace AttemptLimit {

/// Counts an attempt of this scope and refuses it past the limit; expects a writing transaction, to be committed
/// either way.
std::optional<Refusal> whyNotNow(Connection& connection, std::string_view scope, int limit, const Service& service);

}

}
