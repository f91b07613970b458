#pragma once

#include <expected>
#include <utility>

#include "LedgerCore/Client/Errors/Failure.h"

/// What a failed `Result` is compared with.
inline std::unexpected<Failure> failed(Failure failure)
{
    return std::unexpected<Failure>{std::move(failure)};
}
