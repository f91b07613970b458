#pragma once

#include <string>
#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// What can be done with dividends, before anything is typed. A button that cannot be pressed says why by the reason
/// that the service would refuse for.
namespace DividendActions {

/// What keeps the signed-in member from using this action of dividends at all, in words; empty when it can be used.
QString whyNot(std::string_view action, const LedgerSnapshot& snapshot, std::string_view locale);

/// The same for a certain record on this day: an unpaid line, an advance, an allocation or a movement.
struct Target {
    std::string batchID = {};
    std::string participantID = {};
    std::string advanceID = {};
    std::string movementID = {};
};
QString whyNot(std::string_view action, const Target& target, const LedgerSnapshot& snapshot, std::string_view today,
               std::string_view locale);

}
