#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// What the visible books say about an opening balance on one account in one currency.
struct OpeningBalanceEligibility {
    std::string accountID;
    std::string currency;
    bool hasAuthority = false;
    std::vector<std::string> activeOpeningIDs = {}; // openings that have not been reversed, in snapshot order
    bool historyComplete = true;

    bool operator==(const OpeningBalanceEligibility&) const = default;
};

/// Whether an opening balance may be recorded, and on which day.
namespace OpeningBalancePolicy {

/// The day on which an opening balance is booked: the start of the books, or `today` while none is confirmed;
/// nothing when that text names no day.
std::optional<std::string> recordingDate(const LedgerSnapshot& snapshot, std::string_view today);

/// What a form says about the day before an opening balance is recorded.
struct RecordingDay {
    enum class Basis { startDate, today };

    std::string day;
    Basis basis = Basis::startDate; // `today` while no start of the books is confirmed
    /// The day of the earliest visible entry, where the opening balance would stand after it: such an opening adds to
    /// what was recorded since rather than precede it.
    std::optional<std::string> historySince = {};

    bool operator==(const RecordingDay&) const = default;
};

/// `recordingDate` with what is to be said about it; nothing when the start of the books names no day.
/// `earliestVisible` is `earliestVisibleTransactionDay`, which takes a walk through all entries.
std::optional<RecordingDay> recordingDay(const LedgerSnapshot& snapshot, std::string_view today,
                                         const std::optional<std::string>& earliestVisible);

/// The history is complete when every opening and reversal of the account and currency is linked both ways and, as
/// far as there are entries at all, their legs add up to the account's balance.
OpeningBalanceEligibility evaluate(const LedgerSnapshot& snapshot, std::string_view accountID,
                                   std::string_view currency);

/// `evaluate` for each account and each of its currencies, in snapshot order, in one pass over the entries.
std::vector<OpeningBalanceEligibility> evaluateAll(const LedgerSnapshot& snapshot);

/// Whether accounts are to open with balances: not in books that were begun from zero, where none is missing. Whoever
/// may can record one there all the same.
bool areWanted(const LedgerSnapshot& snapshot);

enum class Refusal {
    noAuthority, // unknown, unseen or without the currency, or the member holds no "opening" on it
    archived,
    notResponsible, // a restricted account of somebody else
    alreadyOpened,
    historyIncomplete
};

/// What keeps this account from taking an opening balance in `currency`, or nothing.
std::optional<Refusal> whyNot(const LedgerSnapshot& snapshot, std::string_view accountID, std::string_view currency);
std::optional<Refusal> whyNot(const LedgerSnapshot& snapshot, const OpeningBalanceEligibility& eligibility);

/// An account with the currencies in which it can take an opening balance, never none.
struct Eligible {
    const Account* account = nullptr; // points into the snapshot
    std::vector<std::string> currencies;
};

/// What a form offers, in snapshot order.
std::vector<Eligible> eligible(const LedgerSnapshot& snapshot);

/// What a form starts with: an account, and a currency when it is clear.
struct Preselection {
    std::string accountID;
    std::string currency = {};

    bool operator==(const Preselection&) const = default;
};

/// The account that was asked for when it is on offer, else the only one on offer, never one of several; with the
/// currency asked for when it is on offer there, else the only one.
std::optional<Preselection> preselected(const std::vector<Eligible>& offered, std::string_view accountID = {},
                                        std::string_view currency = {});

/// The day of the earliest visible entry; books cannot start after it.
std::optional<std::string> earliestVisibleTransactionDay(const LedgerSnapshot& snapshot);

}
