#include "LedgerCore/Domain/Dividends/DividendSummary.h"

#include <unordered_map>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

namespace Kind = DividendMovementKind;

/// Adds amounts and remembers whether any sum left 64 bits.
class Adder {
public:
    void add(std::int64_t& sum, std::int64_t amountMinor)
    {
        const auto grown = Money::add(sum, amountMinor);
        m_overflowed |= !grown;
        sum = grown.value_or(sum);
    }
    [[nodiscard]] bool hasOverflowed() const { return m_overflowed; }

private:
    bool m_overflowed = false;
};

using Rows = std::unordered_map<std::string_view, DividendParticipantSummary*>;

void addMovement(const DividendMovement& movement, std::optional<std::string_view> fromDay,
                 DividendParticipantSummary& row, Adder& adder)
{
    const bool isInRange = !fromDay || movement.date >= *fromDay;
    const bool isPayment = movement.kind == Kind::payment;
    if (isPayment || movement.kind == Kind::application)
        adder.add(row.settledMinor, movement.amountMinor);
    if (isInRange && (isPayment || movement.kind == Kind::advance))
        adder.add(row.paidMinor, movement.amountMinor);
    if (isInRange && movement.kind == Kind::returning)
        adder.add(row.returnedMinor, movement.amountMinor);
}

void addBook(const DividendBook& book, std::optional<std::string_view> fromDay, const Rows& rows, Adder& adder)
{
    for (const auto* movement : book.effective()) {
        auto& row = *rows.at(movement->participantID);
        addMovement(*movement, fromDay, row, adder);
        if (movement->kind == Kind::advance)
            adder.add(row.advanceMinor, book.advanceRemaining(movement->id));
    }
    for (const auto* batch : book.batches()) {
        for (const auto& line : batch->lines)
            adder.add(rows.at(line.participantID)->unpaidMinor, book.line(batch->id, line.participantID).unpaidMinor);
    }
}

}

std::expected<DividendSummary, DividendError> DividendSummary::create(const DividendState& state,
                                                                      std::string_view currency,
                                                                      std::optional<std::string_view> fromDay,
                                                                      std::optional<std::string_view> throughDay)
{
    const bool isRange =
        (!fromDay || LedgerDay::isValid(*fromDay)) && (!fromDay || !throughDay || *fromDay <= *throughDay);
    if (!CurrencyInfo::isSupported(currency) || !isRange)
        return std::unexpected(DividendError::invalidState);
    const auto book = DividendBook::create(state, currency, throughDay);
    if (!book)
        return std::unexpected(book.error());

    DividendSummary summary;
    summary.currency = currency;
    summary.participants.reserve(state.participants.size());
    Rows rows;
    for (const auto& participant : state.participants)
        rows.emplace(participant.id, &summary.participants.emplace_back(participant.id, participant.name));

    Adder adder;
    addBook(*book, fromDay, rows, adder);
    for (auto& row : summary.participants) {
        row.netPaidMinor = row.paidMinor - row.returnedMinor; // neither is negative
        adder.add(summary.paidMinor, row.paidMinor);
        adder.add(summary.unpaidMinor, row.unpaidMinor);
    }
    if (adder.hasOverflowed())
        return std::unexpected(DividendError::amountOverflow);
    return summary;
}
