#pragma once

#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerListing.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// The head of the entries of one day, as the ledger's table shows it.
struct LedgerDayRow {
    QString day;                 // "Fri 20 November 2026"
    QString entries;             // "3 entries"
    std::vector<MoneyText> nets; // what they brought, one per currency
    QString spoken;              // all of it, with what came and what went
};

LedgerDayRow dayRowFor(const LedgerListing& listing, const LedgerDayHead& head);
