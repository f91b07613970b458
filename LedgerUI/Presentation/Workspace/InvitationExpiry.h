#pragma once

#include <string_view>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"

/// How long an invitation can still be accepted.
struct InvitationExpiry {
    bool isOver = false;
    int days = 0; // that are left; 0 on the last one
    [[nodiscard]] bool isSoon() const { return isOver || days <= soonDays; }

    static InvitationExpiry of(const PendingInvitation& invitation, std::string_view today);

private:
    static constexpr int soonDays = 3;
};
