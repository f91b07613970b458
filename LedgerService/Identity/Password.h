#pragma once

#include <string>
#include <string_view>

namespace LedgerService {

/// Passwords as Argon2id hashes. Both functions take tens of milliseconds and 64 MiB on purpose.
namespace Password {

/// Whether a person may choose it.
bool isAcceptable(std::string_view password);

std::string hash(std::string_view password);

bool matches(std::string_view password, const std::string& hash);

/// Spends the time of `matches` when there is no hash to compare with, so that an unknown address answers no sooner.
void pretendToMatch(std::string_view password);

}

}
