#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "LedgerUI/Presentation/Records/CapitalQuestion.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// One contribution with everything that is known of it.
struct ContributionDetail {
    struct Line {
        QString label;
        QString value;

        bool operator==(const Line&) const = default;
    };

    std::string id = {};
    QString owner = {};
    MoneyText amount = {};
    bool isReversed = false;
    bool isReversal = false;
    std::vector<Line> lines = {};
    std::string entryID = {}; // empty where the member does not see the entry
    QString link = {};        // to the contribution that undoes it, or that it undoes
    std::string linkID = {};  // empty without one
    QString whyNotReverse = {};

    bool operator==(const ContributionDetail&) const = default;
};

/// What was paid in before these books, as one record of it.
struct BaselineSection {
    std::string id = {};
    QString title = {};
    QString second = {};
    bool isInForce = false;
    std::vector<ContributionDetail::Line> lines = {}; // an amount per owner, then their sum

    bool operator==(const BaselineSection&) const = default;
};

/// What the tab of contributions shows, of one currency and period.
struct ContributionList {
    QString warning = {}; // the history is not entered
    RecordRows rows = {};
    std::vector<BaselineSection> baselines = {}; // the one in force, then those that it superseded
    QString hint = {};

    bool operator==(const ContributionList&) const = default;
};

namespace ContributionLists {

/// Nothing where the capital records break a rule.
std::optional<ContributionList> list(const LedgerSnapshot& snapshot, const CapitalQuestion& question,
                                     std::string_view locale);

/// Nothing for an unknown one. `today` is the day on which it would be reversed.
std::optional<ContributionDetail> detail(const LedgerSnapshot& snapshot, std::string_view id, std::string_view today,
                                         std::string_view locale);

}
