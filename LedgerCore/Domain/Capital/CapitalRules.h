#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/CapitalCommand.h"

/// Why a change to the capital section is not accepted.
enum class CapitalRefusal {
    unknownAction,
    noAuthority,
    contributionsDisabled,
    staleRevision,
    invalidDate,
    dateOrder, // before an action already recorded
    nameRequired,
    participantUnavailable, // unknown, or archived where money or shares are given
    memberUnavailable,      // no such member, or one who is another owner already
    currencyUnsupported,
    amountNotPositive,
    amountLimit,
    accountUnavailable,
    contributionUnavailable, // unknown, or itself a reversal
    alreadyReversed,
    amountUnreadable,
    baselineNegative,
    zeroBaselineUnconfirmed,
    baselineBoundary, // the last covered day is none, or comes after the recording
    baselineOverlap,  // covered time and contributions meet
    baselineConflict, // does not supersede the baseline in force
    baselineCoverage, // leaves out or repeats an owner
    sharesIncomplete, // not exactly 100 %, or an owner listed twice
    visibilityRequired,
    integrity // the stored section breaks its own rules
};

/// The service's code for a refusal, which also names its message.
std::string_view serviceCode(CapitalRefusal refusal);

/// What a capital command is decided on. Everything referred to must outlive it.
struct CapitalContext {
    const CapitalState& state;
    const Member& member;
    std::span<const Member> members;
    std::span<const Account> accounts;
    bool contributionsEnabled = true;
    /// For a "reverse": the account that received the contribution, when it is known.
    std::optional<std::string_view> contributionAccountID = {};

    /// The context of a snapshot. Books without a capital section are at an empty one of revision 0.
    static CapitalContext of(const LedgerSnapshot& snapshot);
    /// The same with the account that `contributionID` was booked into.
    static CapitalContext of(const LedgerSnapshot& snapshot, std::string_view contributionID);
};

/// Which changes to the capital section are accepted; the screens offer by these rules, the service accepts by them.
namespace CapitalRules {

/// Whether the member may use the action at all, whatever the command says.
bool mayUse(std::string_view action, const Member& member);

/// What keeps the command from being accepted, or nothing.
std::optional<CapitalRefusal> whyNot(const CapitalCommand& command, const CapitalContext& context);

/// The last day from which shares may hold. Versions keep their order, so that no shares could be set any more after
/// some that begin on a day which is a slip.
std::string latestOwnershipDay(std::string_view today);

}
