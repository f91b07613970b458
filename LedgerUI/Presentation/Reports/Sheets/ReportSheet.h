#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "LedgerUI/Presentation/Reports/Grids/FundMovementGrids.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportMatrixGrids.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportOwnGrids.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportTrend.h"
#include "LedgerUI/Presentation/Reports/ReportAttention.h"
#include "LedgerUI/Presentation/Reports/ReportOverview.h"
#include "LedgerUI/Presentation/Reports/ReportQuery.h"

/// The answer for the report in sight: its own parts and the overview, which knows the currencies; the others are
/// empty. Two reports of the same books cannot disagree, as both come from them alone. Immutable: made on a worker and
/// shown at once.
struct ReportSheet {
    ReportBooksPointer books;
    ReportQuery query; // with a currency and accounts that the books know
    std::string locale;
    std::optional<ReportError> failure = {}; // then there is nothing else
    std::size_t lostAccounts = 0;            // asked for, but not seen any more
    ReportOverview overview = {};
    ReportGrid currencies = {};
    ReportGrid months = {};
    ReportGrid largestExpenses = {};
    ReportGrid largestIncome = {};
    std::vector<AttentionItem> attention = {};
    ReportTrend trend = {};
    ReportMatrixGrids matrix = {};
    FundMovementGrids funds = {};
    ReportOwnGrids own = {};
};

using ReportSheetPointer = std::shared_ptr<const ReportSheet>;

/// Everything that the report asked for shows, in one look at the books.
ReportSheet reportSheet(ReportBooksPointer books, ReportQuery query, std::string locale);
