#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Templates/TemplateProposals.h"

/// Something that wants a hand, with what one would open to lend it.
struct AttentionItem {
    enum class Kind {
        entryDue,            // opens the form of the template's due day
        entriesDue,          // opens the templates
        entryUnconfirmed,    // opens the form of the entry that is kept
        requestsUnconfirmed, // opens the list of all requests that are kept
        receiptsMissing,     // opens the ledger, filtered
        floatEmpty,          // opens a transfer to `accountID`, its entries where the member cannot fund it
        floatLow,            // likewise
        floatBelowZero,      // opens the entries of `accountID`
        startUnconfirmed,    // opens the bookkeeping setup
        openingsMissing,     // opens an opening balance on `accountID`
        entriesReversed,     // opens the reversals of the period
        dividendsUnpaid,     // opens what is unpaid longest in `currency`
        advancesUnapplied,   // opens the advances in `currency`
        invitationsExpiring, // opens the invitations
    };

    Kind kind;
    QString text;
    std::string accountID = {}; // where the kind is about one
    std::string currency = {};
    TemplateOccurrence occurrence = {}; // where the kind is about one
    bool canFund = false;               // whether the member may send `currency` to `accountID`

    bool operator==(const AttentionItem&) const = default;
};

namespace ReportAttention {

/// What in these books wants a hand, the most pressing first. A float runs low when it holds less than it spends in a
/// month. Only what the member may see, and no start of the books or opening without the right to confirm or record it.
std::vector<AttentionItem> items(const VisibleBooks& books, const Period& period, std::chrono::year_month_day today,
                                 std::string_view locale);

/// A row for what somebody else reversed in the period of what the signed-in member had recorded, if there is any.
std::vector<AttentionItem> reversedByOthers(const LedgerSnapshot& snapshot, const Period& period,
                                            std::string_view locale);

/// A row for what was not confirmed, or not tried because a session had ended: an entry where it is the only one, else
/// how many there are.
std::vector<AttentionItem> unconfirmed(const KeptRequests& kept, std::string_view locale);

/// A row for the invitations that cannot be accepted much longer, or no more.
std::vector<AttentionItem> expiring(const std::vector<PendingInvitation>& invitations, std::string_view today,
                                    std::string_view locale);

/// Rows for the recurring entries that wait: one each while they are few, else one that counts them.
std::vector<AttentionItem> due(const std::vector<TemplateProposal>& proposals, std::string_view locale);

/// The entries of the period that should have a receipt and have none: income, expenses and refunds that stand.
std::size_t entriesWithoutReceipt(const LedgerSnapshot& snapshot, const Period& period);

}
