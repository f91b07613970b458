#pragma once

#include <span>
#include <vector>

#include "LedgerCore/Domain/Records/CapitalState.h"
#include "LedgerCore/Domain/Records/DividendState.h"

/// The default ratios of dividends as the owners' shares of one day make them. Later shares do not follow by
/// themselves.
namespace OwnershipRatios {

/// The participants that differ afterwards, in their new form; those with an empty id are new. Each owner with a share
/// is a participant with the share as ratio: the one of the same member, else one without a member of the same name,
/// else a new one; an archived one takes part again. Other participants who are not archived get the ratio 0.
std::vector<DividendParticipant> changed(const CapitalOwnershipVersion& shares,
                                         std::span<const CapitalParticipant> owners,
                                         std::span<const DividendParticipant> participants);

}
