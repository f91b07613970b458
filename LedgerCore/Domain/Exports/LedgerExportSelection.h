#pragma once

#include <cstddef>
#include <expected>
#include <optional>
#include <set>
#include <string>

#include "LedgerCore/Domain/Exports/ExportRefusal.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Reports/ReportFigure.h"

/// What a person chose to export. With an "all visible" choice the list beside it is not looked at.
struct LedgerExportScope {
    std::string startDate; // first and last day, both in the scope
    std::string endDate;
    std::set<std::string, std::less<>> accountIDs;
    std::set<std::string, std::less<>> currencies;
    std::set<std::string, std::less<>> kinds; // entry kinds
    bool includesAllVisibleAccounts = false;
    bool includesAllVisibleCurrencies = false;
    bool includesReceiptIndex = false;
    /// Where it is set, of all these only the entries with these identifiers.
    std::optional<SharedList<std::string>> entryIDs = {};
    LegDirection direction = LegDirection::both;

    bool operator==(const LedgerExportScope&) const = default;
};

/// How much a file will hold.
struct LedgerExportPreview {
    std::size_t transactionCount = 0;
    std::size_t entryCount = 0; // legs, one record each
    std::size_t accountCount = 0;
    std::size_t receiptCount = 0;

    bool operator==(const LedgerExportPreview&) const = default;
};

/// A scope applied to the books.
struct LedgerExportSelection {
    /// Holds only the selected legs, the entries they belong to, and the accounts, members, categories and receipts
    /// named by these, receipts only for a member who may list them; each list in the order of the whole snapshot.
    LedgerSnapshot snapshot;

    static std::expected<LedgerExportSelection, ExportRefusal> create(const LedgerSnapshot& snapshot,
                                                                      const LedgerExportScope& scope);

    [[nodiscard]] LedgerExportPreview preview() const;
};
