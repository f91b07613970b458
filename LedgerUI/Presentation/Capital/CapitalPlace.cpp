#include "LedgerUI/Presentation/Capital/CapitalPlace.h"

#include <algorithm>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerUI/Presentation/Dividends/MovementText.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Records/RecordDraft.h"

namespace {

CapitalPlace placeOf(const DividendBatch& batch, std::string_view participantID)
{
    return {.tab = CapitalModuleTab::dividends,
            .currency = batch.currency,
            .date = batch.date,
            .choice = {.batchID = batch.id, .participantID = std::string{participantID}}};
}

CapitalPlace placeOfAdvance(const DividendMovement& advance)
{
    return {.tab = CapitalModuleTab::dividends,
            .currency = advance.currency,
            .date = advance.date,
            .choice = {.batchID = std::string{DividendBoards::advances},
                       .participantID = advance.participantID,
                       .advanceID = advance.id}};
}

/// A movement stands under the allocation or the advance that it is about, which is listed by a day of its own; a
/// reversal where the movement stands that it undoes.
CapitalPlace placeOf(const DividendMovement& movement, const DividendState& state)
{
    const auto* undone = MovementText::undone(movement, state);
    const auto& original = undone ? *undone : movement;
    if (const auto* batch = RecordDrafts::find(state.batches, original.batchID.value_or("")))
        return placeOf(*batch, original.participantID);
    const auto* advance = RecordDrafts::find(state.movements, original.advanceID.value_or(""));
    return placeOfAdvance(advance ? *advance : original);
}

/// The newest allocation of a period that the participant has a part in, else their newest advance. What was taken back
/// comes after everything that stands.
std::optional<CapitalPlace> settlementIn(const Period& period, std::string_view participantID,
                                         const DividendTables& tables)
{
    const auto batches = DividendBoards::batches(tables, period);
    const auto advances = DividendBoards::advancesOf(tables, period);
    for (const bool isTakenBack : {false, true}) {
        for (const auto* batch : batches) {
            if (batch->cancelled == isTakenBack && DividendBoards::hasLineOf(*batch, participantID))
                return placeOf(*batch, participantID);
        }
        for (const auto* advance : advances) {
            if (advance->reversedBy.has_value() == isTakenBack && advance->participantID == participantID)
                return placeOfAdvance(*advance);
        }
    }
    return std::nullopt;
}

/// The first line with something unpaid of the earliest batch that has one.
DividendChoice unpaidLongest(const DividendState& state, std::string_view currency)
{
    const auto book = DividendBook::create(state, currency, std::nullopt);
    if (!book)
        return {}; // the page says what is wrong with them
    DividendChoice choice;
    const DividendBatch* longest = nullptr;
    for (const auto* batch : book->batches()) {
        const auto line = std::ranges::find_if(batch->lines, [&](const DividendLine& each) {
            return book->line(batch->id, each.participantID).unpaidMinor > 0;
        });
        if (line == batch->lines.end() || (longest && longest->date <= batch->date))
            continue;
        longest = batch;
        choice = {.batchID = batch->id, .participantID = line->participantID};
    }
    return choice;
}

template <class Record>
void addDays(std::vector<std::uint32_t>& days, const std::vector<Record>& records)
{
    for (const auto& record : records) {
        const auto day = LedgerDay::parse(record.date);
        days.push_back(day ? dayNumber(*day) : 0);
    }
}

}

std::optional<CapitalPlace> CapitalPlaces::placeOf(const PageLink& link, const LedgerSnapshot& snapshot)
{
    if (link.action == PageAction::showContribution && snapshot.capital) {
        if (const auto* found = RecordDrafts::find(snapshot.capital->contributions, link.subject))
            return CapitalPlace{
                .tab = CapitalModuleTab::contributions, .currency = found->currency, .date = found->date};
    }
    if (link.action == PageAction::showMovement && snapshot.dividends) {
        if (const auto* found = RecordDrafts::find(snapshot.dividends->movements, link.subject))
            return ::placeOf(*found, *snapshot.dividends);
    }
    if (link.action == PageAction::showUnpaid && snapshot.dividends)
        return CapitalPlace{.tab = CapitalModuleTab::dividends,
                            .currency = link.subject,
                            .choice = unpaidLongest(*snapshot.dividends, link.subject)};
    if (link.action == PageAction::showAdvances && snapshot.dividends)
        return CapitalPlace{.tab = CapitalModuleTab::dividends,
                            .currency = link.subject,
                            .choice = {.batchID = std::string{DividendBoards::advances}}};
    return std::nullopt;
}

std::optional<CapitalPlace> CapitalPlaces::settlementOf(std::string_view participantID, const LedgerSnapshot& snapshot,
                                                        const CapitalQuestion& question, std::string_view locale)
{
    const auto tables = DividendTables::create(snapshot, question.currency, std::nullopt, locale);
    if (!tables)
        return std::nullopt;
    auto place = settlementIn(question.period, participantID, *tables);
    if (!place)
        return settlementIn(Period::allTime(), participantID, *tables);
    place->date.clear(); // it is listed as the page stands
    return place;
}

PeriodCounts CapitalPlaces::countsOf(const LedgerSnapshot& snapshot)
{
    std::vector<std::uint32_t> days;
    if (snapshot.capital)
        addDays(days, snapshot.capital->contributions);
    if (snapshot.dividends) {
        addDays(days, snapshot.dividends->batches);
        addDays(days, snapshot.dividends->movements);
    }
    return PeriodCounts{std::move(days)};
}
