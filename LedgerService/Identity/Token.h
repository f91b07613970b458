#pragma once

#include <string>
#include <string_view>

namespace LedgerService {

/// Sign-in tokens: 256 random bits that only the client keeps; the service stores their hash.
namespace Token {

/// A new token as text that fits a header.
std::string issue();

/// What the service stores and looks tokens up by.
std::string hash(std::string_view token);

}

}
