#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "LedgerCore/Domain/Dividends/DividendContext.h"

/// Why a change to the dividend section is not accepted.
enum class DividendRefusal {
    unknownAction,
    noAuthority,
    dividendsDisabled,
    staleRevision,
    invalidDate,
    dateOrder, // before an action already recorded
    nameRequired,
    participantUnavailable, // unknown, or archived where new money is given
    memberUnavailable,      // no such member, or one who is another participant already
    ratioInvalid,
    visibilityRequired,
    periodRequired,
    currencyUnsupported,
    amountNotPositive,
    amountLimit,
    sharesIncomplete, // not exactly 100 %, or a participant listed twice
    batchUnavailable, // unknown or cancelled, or its participant is unknown
    advanceUnavailable,
    overpayment,     // past the unpaid line, or past what is left of the advance
    overapplication, // the same for an advance set against a line
    dependencies,    // settled by movements that must be reversed first
    movementUnavailable,
    alreadyReversed,
    ownershipMissing, // no owners' shares of 100 % are in force on the day
    integrity         // the stored section breaks its own rules
};

/// The service's code for a refusal, which also names its message.
std::string_view serviceCode(DividendRefusal refusal);

/// Which changes to the dividend section are accepted; the screens offer by these rules, the service accepts by them.
namespace DividendRules {

/// Whether the member may use the action at all, whatever the command says.
bool mayUse(std::string_view action, const Member& member);

/// What keeps the command from being accepted, or nothing. A record that is gone is said to be gone before it is asked
/// whether the member may use the account.
std::optional<DividendRefusal> whyNot(const DividendCommand& command, const DividendContext& context);

/// The largest amount that a "pay", "return" or "apply" may carry, in minor units; nothing while what it settles is
/// not chosen, unknown, or the member may not see dividends. The amount of the command is not looked at.
std::optional<std::int64_t> limit(const DividendCommand& command, const DividendContext& context);

}
