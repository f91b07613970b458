#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// What can be done with capital, before anything is typed. A button that cannot be pressed says why by the reason that
/// the service would refuse for.
namespace CapitalActions {

/// What keeps the signed-in member from using this action of capital at all, in words; empty when it can be used.
QString whyNot(std::string_view action, const LedgerSnapshot& snapshot, std::string_view locale);

}
