#pragma once

#include <expected>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Exports/ExportRefusal.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Who prepared which report, with a copy of the records it was computed from: it is written only while they are the
/// same.
struct ReportExportAuthorization {
    using AccountIDs = std::set<std::string, std::less<>>;

    struct Evidence {
        std::string companyName;
        std::vector<Account> accounts;
        EntryList transactions;           // with a leg on the accounts in the currency, and what they undo
        std::vector<Category> categories; // of these entries, and the ones above them
        std::optional<std::string> bookkeepingStartDate;
        std::optional<std::string> initializationMode;

        bool operator==(const Evidence&) const = default;

        static Evidence of(const LedgerSnapshot& snapshot, const AccountIDs& accountIDs, std::string_view currency);
    };

    std::string companyID;
    std::string userID;
    std::string memberID;
    std::string currency;
    AccountIDs accountIDs;
    bool includesAllVisibleAccounts = false;
    Evidence evidence;

    bool operator==(const ReportExportAuthorization&) const = default;

    /// The accounts that hold the currency and that the current member may view.
    static AccountIDs visibleIDs(const LedgerSnapshot& snapshot, std::string_view currency);

    static std::expected<void, ExportRefusal> requireAccess(const LedgerSnapshot& snapshot,
                                                            const AccountIDs& accountIDs, std::string_view currency);

    /// For a report on these accounts, or on all visible ones where none are given.
    static std::expected<ReportExportAuthorization, ExportRefusal>
    create(const LedgerSnapshot& snapshot, std::string_view currency, std::optional<AccountIDs> accountIDs);

    /// Whether the report may be written while the books stand like this.
    [[nodiscard]] std::expected<void, ExportRefusal> validate(const LedgerSnapshot& snapshot) const;
};
