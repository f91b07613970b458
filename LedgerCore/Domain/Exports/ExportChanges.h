#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Exports/LedgerExportAuthorization.h"
#include "LedgerCore/Domain/Exports/ReportExportAuthorization.h"

/// What is different between two states of the records behind one export, told to whoever previewed the earlier one.
struct ExportChanges {
    struct Renamed {
        std::string before;
        std::string now;

        bool operator==(const Renamed&) const = default;
    };

    std::size_t added = 0; // entries
    std::size_t removed = 0;
    std::size_t edited = 0;
    std::vector<Renamed> renamed = {}; // the company, accounts and members, in the order of the books
    bool hasOtherCategories = false;
    bool hasOtherReceipts = false;
    bool hasOtherSettings = false;

    bool operator==(const ExportChanges&) const = default;

    [[nodiscard]] bool any() const { return *this != ExportChanges{}; }

    static ExportChanges between(const LedgerExportAuthorization::Evidence& before,
                                 const LedgerExportAuthorization::Evidence& now);
    static ExportChanges between(const ReportExportAuthorization::Evidence& before,
                                 const ReportExportAuthorization::Evidence& now);
};
