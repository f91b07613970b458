#include "LedgerCore/Client/Errors/Failure.h"

#include <algorithm>
#include <array>

namespace {

constexpr int unauthorized = 401;
constexpr int requestTimeout = 408;

/// Statuses by which the service judges a command. The others from 400 to 499 may turn away whoever asks, whatever the
/// command.
constexpr std::array judgments{400, 409, 413, 422};

CommandFate fateOf(const APIError& error)
{
    if (error.status == 0) {
        const bool isLost = error.code == ClientCode::network || error.code == ClientCode::invalidResponse;
        return isLost ? CommandFate::unknown : CommandFate::undecided;
    }
    if (error.status < 400 || error.status >= 500 || error.status == requestTimeout)
        return CommandFate::unknown;
    const bool isJudged = std::ranges::find(judgments, error.status) != judgments.end();
    return isJudged ? CommandFate::refused : CommandFate::undecided;
}

}

CommandFate fateOf(const Failure& failure)
{
    if (const auto* error = std::get_if<APIError>(&failure))
        return fateOf(*error);
    return std::holds_alternative<Cancelled>(failure) ? CommandFate::unknown : CommandFate::undecided;
}

bool endsSession(const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error && error->status == unauthorized;
}
