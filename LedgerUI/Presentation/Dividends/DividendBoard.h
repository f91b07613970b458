#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerUI/Presentation/Dividends/DividendTables.h"
#include "LedgerUI/Presentation/Records/CapitalQuestion.h"
#include "LedgerUI/Presentation/Records/RecordFigure.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// What is chosen on the tab of dividends.
struct DividendChoice {
    std::string batchID = {}; // `DividendBoards::advances` for the advances; empty for the first batch
    std::string participantID = {};
    std::string advanceID = {};

    bool operator==(const DividendChoice&) const = default;
};

/// What the tab of dividends shows: the allocations of a currency, the chosen one and how one participant of it stands.
struct DividendBoard {
    DividendChoice choice = {}; // what is shown, of what was wanted
    RecordRows batches = {};
    QString title = {};
    QString subtitle = {};
    RecordRows lines = {}; // of the chosen batch, or the advances
    QString person = {};   // whose settlement follows; empty for none
    QString standing = {}; // beside the name
    std::vector<RecordFigure> equation = {};
    RecordRows movements = {};
    QString notes = {}; // what is to be known of set-offs among them
    QString hint = {};

    bool operator==(const DividendBoard&) const = default;
};

namespace DividendBoards {

/// The allocations of the period and all that are not settled, the latest first; so also the advances.
std::vector<const DividendBatch*> batches(const DividendTables& tables, const Period& period);
DividendTables::Movements advancesOf(const DividendTables& tables, const Period& period);

/// Whether the participant has a part in the allocation.
bool hasLineOf(const DividendBatch& batch, std::string_view participantID);

/// "IDR 125,000,000, booked on 31 July 2026".
QString headOf(const DividendBatch& batch, std::string_view locale);

/// The row that stands for all advances.
inline constexpr std::string_view advances = "advances";

/// Nothing where the dividend records break a rule. Allocations of the period and all that are not settled are shown;
/// figures are those of now, whatever the period.
std::optional<DividendBoard> board(const LedgerSnapshot& snapshot, const CapitalQuestion& question,
                                   const DividendChoice& wanted, std::string_view locale);

/// Entitlement = advances applied + paid + payable, of one line.
std::vector<RecordFigure> equation(const DividendState& state, std::string_view batchID, std::string_view participantID,
                                   std::string_view locale);
/// Advance = applied + returned + remaining; empty for one that is reversed or not there.
std::vector<RecordFigure> equationOfAdvance(const DividendState& state, std::string_view advanceID,
                                            std::string_view locale);

}
