#pragma once

#include <expected>
#include <string_view>
#include <vector>

#include "LedgerUI/Presentation/Records/CapitalQuestion.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"

/// The owners' shares from a day on, as a bar of a hundred percent.
struct OwnershipBar {
    struct Share {
        QString name;
        QString percent;
        int basisPoints = 0;
        std::size_t swatch = 0; // the owner's place among all

        bool operator==(const Share&) const = default;
    };

    std::string id = {};
    QString day = {};
    QString state = {}; // "In force", "Begins later"; empty for one of the past
    bool isInForce = false;
    std::vector<Share> shares = {};
    QString spoken = {};

    bool operator==(const OwnershipBar&) const = default;
};

/// What the first tab of capital and dividends shows, of one currency and period.
struct CapitalOverview {
    QString title = {};          // whose figures they are
    QString since = {};          // from when the shares in force hold
    QString warning = {};        // the history is not complete
    bool showsOwnership = false; // else the member may not see shares, not even that there are none
    RecordRows owners = {};
    std::vector<std::string> participants = {}; // of each of these rows; empty for who has no part in dividends
    std::vector<QString> notes = {};
    std::vector<QString> printedNotes = {};   // without what can only be done on the screen
    std::vector<OwnershipBar> ownership = {}; // the latest first
    RecordRows latest = {};

    bool operator==(const CapitalOverview&) const = default;
};

namespace CapitalOverviews {

/// Fails as a whole where the records break a rule: part of the figures would mislead.
enum class Unavailable { capital, dividends };
std::expected<CapitalOverview, Unavailable> overview(const LedgerSnapshot& snapshot, const CapitalQuestion& question,
                                                     std::string_view today, std::string_view locale);

/// The versions of the owners' shares, the latest first. In force is the one that holds at the end of the period.
std::vector<OwnershipBar> ownership(const CapitalState& state, const CapitalQuestion& question,
                                    std::string_view locale);

}
