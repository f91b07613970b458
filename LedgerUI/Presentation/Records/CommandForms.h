#pragma once

#include "LedgerCore/Client/Session/KeptCommands.h"

/// Whether a command on capital or dividends comes from a form, in which it can be looked at again. Those of a single
/// press have none.
inline bool hasForm(const SectionCommand& command)
{
    if (const auto* capital = std::get_if<CapitalCommand>(&command))
        return capital->action != CapitalAction::setVisibility;
    const auto& action = std::get<DividendCommand>(command).action;
    return action != DividendAction::setVisibility && action != DividendAction::fillFromOwnership;
}
