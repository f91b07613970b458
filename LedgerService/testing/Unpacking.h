#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

/// What a client makes of a packed body.
namespace Unpacking {

/// The body; nothing when it is damaged or does not end. `coding` is "gzip", "zstd", or empty for what is not packed.
std::optional<std::string> whole(std::string_view coding, std::string_view packed);

/// As much of it as these first bytes tell; nothing when they are damaged.
std::optional<std::string> begun(std::string_view coding, std::string_view packed);

}

}
