#include "LedgerCore/Client/Failure.h"

namespace {

constexpr int requestTimeout = 408;

bool isOutcomeUnknown(const APIError& error)
{
    if (error.status == 0)
        return error.code == ClientCode::network || error.code == ClientCode::invalidResponse;
    const bool refused = error.status >= 400 && error.status < 500;
    return !refused || error.status == requestTimeout;
}

}

bool isOutcomeUnknown(const Failure& failure)
{
    if (const auto* error = std::get_if<APIError>(&failure))
        return isOutcomeUnknown(*error);
    return std::holds_alternative<Cancelled>(failure);
}
