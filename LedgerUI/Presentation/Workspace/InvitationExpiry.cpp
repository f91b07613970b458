#include "LedgerUI/Presentation/Workspace/InvitationExpiry.h"

#include <chrono>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"

namespace {

int daysBetween(std::string_view from, std::string_view to)
{
    const auto first = LedgerDay::parse(from);
    const auto last = LedgerDay::parse(to);
    if (!first || !last)
        return 0;
    return static_cast<int>((std::chrono::sys_days{*last} - std::chrono::sys_days{*first}).count());
}

}

InvitationExpiry InvitationExpiry::of(const PendingInvitation& invitation, std::string_view today)
{
    if (invitation.status != InvitationStatus::pending)
        return {.isOver = true};
    // The service may have listed it on an earlier day.
    const int days = daysBetween(today, DayText::dayOf(invitation.expiresAt));
    return {.isOver = days < 0, .days = days};
}
