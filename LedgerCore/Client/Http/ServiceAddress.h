#pragma once

#include <string>
#include <string_view>

/// Which service the client talks to when it starts.
namespace ServiceAddress {

/// A service on this very machine, for development.
inline constexpr std::string_view fallback = "http://127.0.0.1:48731";

/// `configured` when it is an address that may be used, else the fallback.
std::string choose(std::string_view configured);

/// The choice for the address that was set when this program was built; an empty setting means the fallback.
std::string atStart();

}
