#include "LedgerUI/Presentation/Capital/LatestRecords.h"

#include <algorithm>
#include <functional>
#include <tuple>
#include <unordered_set>

#include "LedgerUI/Presentation/Dividends/MovementText.h"
#include "LedgerUI/Presentation/Records/CapitalSections.h"
#include "LedgerUI/Presentation/Records/LinkedEntries.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

constexpr std::size_t shownAtMost = 8;

/// A record before it is written: only the last ones are.
struct Record {
    std::string_view date;
    std::string_view createdAt;
    std::string_view id;
    std::string_view entryID; // empty where no money moved
    std::function<RecordRow()> row;
};

/// What is struck through also says why: not everybody sees the line, and no reader speaks it.
QString besides(const QString& text, std::string_view remark, std::string_view locale)
{
    return remark.empty() ? text : text + QStringLiteral(" · ") + wordIn(locale, capitalWords(), remark);
}

RecordRow rowOf(std::string id, const QString& day, RecordCell what, RecordCell amount)
{
    return {.id = std::move(id),
            .cells = {{.text = day, .tone = RecordTone::quiet}, std::move(what), std::move(amount)}};
}

RecordRow rowOf(const CapitalContribution& contribution, std::string_view today, std::string_view locale)
{
    const bool isReversal = contribution.reversalOf.has_value();
    RecordCell what{.text = wordIn(locale, capitalWords(), isReversal ? "record.reversed" : "record.contribution"),
                    .second = besides(qString(contribution.participantName),
                                      contribution.reversedBy ? "remark.reversed" : "", locale),
                    .glyph = isReversal ? QStringLiteral("arrow-counterclockwise") : QStringLiteral("people"),
                    .glyphTone = isReversal ? RecordTone::quiet : RecordTone::capital};
    auto amount = RecordText::movement(contribution.amountMinor, contribution.currency, locale);
    if (!isReversal)
        amount.tone = RecordTone::capital;
    if (contribution.reversedBy) {
        what = RecordText::struck(std::move(what));
        amount = RecordText::struck(std::move(amount));
    }
    return rowOf(contribution.id, DayText::nearDay(contribution.date, today, locale), std::move(what),
                 std::move(amount));
}

RecordRow rowOf(const DividendBatch& batch, std::string_view today, std::string_view locale)
{
    RecordCell what{.text = wordIn(locale, capitalWords(), "record.allocation", {batch.period}),
                    .second = besides(countedIn(locale, capitalWords(), "participants", batch.lines.size()),
                                      batch.cancelled ? "remark.cancelled" : "", locale),
                    .glyph = QStringLiteral("pie-chart"),
                    .glyphTone = RecordTone::dividend};
    auto amount = RecordText::amount(batch.amountMinor, batch.currency, locale);
    amount.tone = RecordTone::quiet; // no money moved
    if (batch.cancelled) {
        what = RecordText::struck(std::move(what));
        amount = RecordText::struck(std::move(amount));
    }
    return rowOf(batch.id, DayText::nearDay(batch.date, today, locale), std::move(what), std::move(amount));
}

RecordRow rowOf(const DividendMovement& movement, const DividendState& state, std::string_view today,
                std::string_view locale)
{
    const auto* original = MovementText::undone(movement, state);
    auto what = MovementText::title(movement, original, locale);
    const auto person = std::ranges::find(state.participants, movement.participantID, &DividendParticipant::id);
    what.second = besides(person == state.participants.end() ? QString{} : qString(person->name),
                          movement.reversedBy ? "remark.reversed" : "", locale);
    auto amount = MovementText::amount(movement, original, locale);
    return rowOf(movement.id, DayText::nearDay(movement.date, today, locale), std::move(what), std::move(amount));
}

/// The rows of these records, with the entries that they lead to.
std::vector<RecordRow> rowsOf(const std::vector<Record>& records, const LedgerSnapshot& snapshot,
                              std::string_view locale)
{
    std::unordered_set<std::string_view> ids;
    for (const auto& record : records)
        ids.insert(record.entryID);
    const LinkedEntries entries{snapshot, ids};
    std::vector<RecordRow> rows;
    for (const auto& record : records) {
        auto& row = rows.emplace_back(record.row());
        row.entry = entries.reached(record.entryID);
        if (!record.entryID.empty() && !row.entry)
            row.cells[1].second = besides(row.cells[1].second, "account.unseen", locale);
    }
    return rows;
}

}

RecordRows LatestRecords::rows(const LedgerSnapshot& snapshot, const CapitalQuestion& question, std::string_view today,
                               std::string_view locale)
{
    std::vector<Record> records;
    const auto add = [&](const auto& record, std::string_view entryID, auto make) {
        if (record.currency == question.currency && question.period.contains(record.date))
            records.push_back({record.date, record.createdAt, record.id, entryID, std::move(make)});
    };
    if (const auto* capital = CapitalSections::capital(snapshot)) {
        for (const auto& each : capital->contributions)
            add(each, each.transactionID, [&each, today, locale] { return rowOf(each, today, locale); });
    }
    if (const auto* dividends = CapitalSections::dividends(snapshot)) {
        for (const auto& each : dividends->batches)
            add(each, {}, [&each, today, locale] { return rowOf(each, today, locale); });
        for (const auto& each : dividends->movements)
            add(each, each.transactionID ? std::string_view{*each.transactionID} : std::string_view{},
                [&each, dividends, today, locale] { return rowOf(each, *dividends, today, locale); });
    }
    std::ranges::sort(records, std::ranges::greater{},
                      [](const Record& each) { return std::tuple{each.date, each.createdAt, each.id}; });
    records.resize(std::min(records.size(), shownAtMost));
    return {.columns = {{.head = wordIn(locale, capitalWords(), "column.day")},
                        {.head = wordIn(locale, capitalWords(), "column.record"), .room = ColumnRoom::stretches},
                        {.head = wordIn(locale, capitalWords(), "column.amount"), .isAtRight = true}},
            .rows = rowsOf(records, snapshot, locale)};
}
