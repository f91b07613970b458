#pragma once

#include <optional>
#include <string_view>

#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// Handing back a token, which its holder may do whatever became of the member or the company since.
namespace SignOut {

/// Ends the token, or says why not: it is not valid. `now` is a stamp.
std::optional<Refusal> end(const Service& service, std::string_view token, std::string_view now);

}

}
