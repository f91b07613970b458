#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"

/// What the ledger says in place of an empty table, and what it offers to do about it.
struct LedgerNotice {
    enum class Reason { nothingRecorded, noAccounts, noAccess, nothingInPeriod, nothingMatches };
    enum class Remedy { record, recordOpening, setUp, changeFilter };
    struct Offer {
        Remedy remedy = Remedy::changeFilter;
        QString text;
        LedgerFilter filter; // for `changeFilter`: the one to go on with
    };

    /// One of several things to do one after the other.
    struct Step {
        QString title;
        QString sentence;
        Offer offer;
    };

    Reason reason = Reason::nothingRecorded;
    QString headline;
    QString sentence;
    std::vector<Offer> offers; // at most two; none beside steps
    std::vector<Step> steps;
};

/// The notice for a filter that nothing passes. The latest entries offered are those up to `today`, where there are
/// any.
LedgerNotice noticeFor(const LedgerBook& book, const LedgerFilter& filter, const PeriodCounts& counts,
                       std::chrono::year_month_day today);
