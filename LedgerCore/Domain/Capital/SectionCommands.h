#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "LedgerCore/Domain/Records/Requests/SectionChange.h"
#include "LedgerCore/Domain/Text/TextFold.h"

/// What building a command is alike in, whichever section of the books it is on.
namespace SectionCommands {

template <class Command>
Command begin(std::string_view action, int revision, CommandIssue issue)
{
    Command command;
    command.action = action;
    command.expectedRevision = revision;
    command.date = std::move(issue.date);
    command.idempotencyKey = std::move(issue.idempotencyKey);
    return command;
}

/// A typed text without the white space around it; blank is as good as left out.
inline std::optional<std::string> unlessBlank(std::string_view typed)
{
    const auto text = TextFold::trimmed(typed);
    return text.empty() ? std::nullopt : std::optional<std::string>{text};
}

}
