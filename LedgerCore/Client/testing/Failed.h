#pragma once

#include <expected>
#include <utility>

#include "LedgerCore/Client/Failure.h"

/// What a failed `Result` is compared with.
inline std::unexpected<Failure> failed(Failure failure)
{
    return std::unexpected<Failure>{std::move(failure)};
}
