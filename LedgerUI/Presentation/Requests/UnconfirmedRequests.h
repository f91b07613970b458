#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// A request that the service has not confirmed, as a person reads it.
struct UnconfirmedRequest {
    std::string id; // its idempotency key
    QString glyph;
    QString what;         // "Expense · Utilities › Electricity · Operating bank"
    MoneyText amount;     // with an empty currency where the request has none
    QString when;         // its bookkeeping day and when it was sent
    QString standing;     // whether it may have been carried out
    bool mayRetry = true; // it may be sent again as it stands
    bool hasForm = true;  // there is a form in which it can be looked at

    bool operator==(const UnconfirmedRequest&) const = default;
};

namespace UnconfirmedRequests {

/// A row for each, oldest first by kind: entries, reversals, then commands on capital and dividends.
std::vector<UnconfirmedRequest> rows(const KeptRequests& kept, const LedgerSnapshot& snapshot, std::string_view locale);

}
