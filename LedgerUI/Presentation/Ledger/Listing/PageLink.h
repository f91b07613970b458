#pragma once

#include <optional>
#include <string>
#include <vector>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"
#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"

/// Where a link on one page leads: another page, and what it is to do there.
struct PageLink {
    WorkspacePage page = WorkspacePage::ledger;
    std::string action = {};  // an id that the page knows, one of `PageAction`; empty only to open the page
    std::string subject = {}; // the id of what the action is about; empty where it is about nothing
    std::optional<LedgerFilter> entries = {}; // which ones are to be shown
    std::vector<std::string> subjects = {};   // where it is about several

    bool operator==(const PageLink&) const = default;
};

/// What pages can be asked to do by a link.
namespace PageAction {
inline constexpr const char* showAccount = "showAccount";       // ledger: the entries of one account; accounts: itself
inline constexpr const char* showEntries = "showEntries";       // ledger: the entries that pass a filter
inline constexpr const char* chooseEntries = "chooseEntries";   // ledger: several entries, shown and chosen
inline constexpr const char* newAccount = "newAccount";         // accounts: opens the form of a new one
inline constexpr const char* openingBalance = "openingBalance"; // accounts: the next opening balance to be recorded
inline constexpr const char* setStartDate = "setStartDate";     // company: the day on which the books start
inline constexpr const char* showCategories = "showCategories"; // company: the categories
inline constexpr const char* showInvitations = "showInvitations";   // company: the invitations
inline constexpr const char* newEntry = "newEntry";                 // ledger: opens the form of the first kind there is
inline constexpr const char* showEntry = "showEntry";               // ledger: one entry
inline constexpr const char* showContribution = "showContribution"; // dividends: one contribution of an owner
inline constexpr const char* showMovement = "showMovement";         // dividends: what settles an allocation or advance
inline constexpr const char* showUnpaid = "showUnpaid";             // dividends: what is unpaid longest of a currency
inline constexpr const char* showAdvances = "showAdvances";         // dividends: the advances in a currency
}
