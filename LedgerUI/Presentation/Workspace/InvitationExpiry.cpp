#include "LedgerUI/Presentation/Workspace/InvitationExpiry.h"

#include <algorithm>
#include <chrono>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"

namespace {

constexpr std::string_view dayShape = "YYYY-MM-DD";
constexpr std::string_view pendingStatus = "pending";

/// How many days from one day to another; both begin like "2026-11-20".
int daysBetween(std::string_view from, std::string_view to)
{
    const auto first = LedgerDay::parse(from.substr(0, dayShape.size()));
    const auto last = LedgerDay::parse(to.substr(0, dayShape.size()));
    if (!first || !last)
        return 0;
    return static_cast<int>((std::chrono::sys_days{*last} - std::chrono::sys_days{*first}).count());
}

}

InvitationExpiry InvitationExpiry::of(const PendingInvitation& invitation, std::string_view today)
{
    if (invitation.status != pendingStatus)
        return {.isOver = true};
    return {.days = std::max(0, daysBetween(today, invitation.expiresAt))};
}
