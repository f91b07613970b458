#include "LedgerCore/Domain/Dividends/DividendBook.h"

#include <algorithm>
#include <unordered_set>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using Failed = std::optional<DividendError>;
namespace Kind = DividendMovementKind;
using enum DividendError;

bool isAmount(std::int64_t minor)
{
    return minor >= 1 && minor <= Money::maximumMinor;
}

bool isOnOrBefore(std::string_view day, std::optional<std::string_view> throughDay)
{
    return !throughDay || day <= *throughDay;
}

/// A reversal names the movement that it undoes, which names it, and both are about the same money.
bool isReversalOf(const DividendMovement& reversal, const DividendMovement& original)
{
    return reversal.kind == Kind::reversal && original.kind != Kind::reversal && reversal.reversalOf == original.id &&
           original.reversedBy == reversal.id && !reversal.reversedBy &&
           reversal.participantID == original.participantID && reversal.currency == original.currency &&
           reversal.amountMinor == original.amountMinor && reversal.date >= original.date;
}

/// Adds to a sum that started at 0 and may not leave 64 bits.
Failed grow(std::int64_t& sum, std::int64_t amountMinor)
{
    const auto grown = Money::add(sum, amountMinor);
    if (!grown)
        return amountOverflow;
    sum = *grown;
    return std::nullopt;
}

}

class DividendBook::Builder {
public:
    Builder(DividendBook& book, const DividendState& state, std::string_view currency,
            std::optional<std::string_view> throughDay)
        : m_book(book), m_state(state), m_currency(currency), m_throughDay(throughDay)
    {
    }

    Failed build()
    {
        for (const auto& participant : m_state.participants) {
            if (!m_participants.insert(participant.id).second)
                return invalidState;
        }
        if (const auto failed = indexMovements())
            return failed;
        if (const auto failed = indexBatches())
            return failed;
        for (const auto* movement : m_ordered) {
            if (movement->kind == Kind::advance && counts(*movement))
                m_book.m_advanceRemaining.emplace(movement->id, movement->amountMinor);
        }
        for (const auto* movement : m_ordered) {
            if (const auto failed = settle(*movement))
                return failed;
        }
        return closeLines();
    }

private:
    Failed indexBatches()
    {
        for (const auto& batch : m_state.batches) {
            if (batch.currency != m_currency)
                continue;
            if (const auto failed = whyInvalid(batch))
                return failed;
            if (!m_batches.emplace(batch.id, &batch).second)
                return invalidState;
            if (isCancelled(batch) || !isOnOrBefore(batch.date, m_throughDay))
                continue;
            m_book.m_batches.push_back(&batch);
            auto& lines = m_book.m_lines[batch.id];
            for (const auto& line : batch.lines)
                lines[line.participantID].entitlementMinor = line.amountMinor;
        }
        return std::nullopt;
    }

    /// Whether the batch had been cancelled by the day of the book. Without a recorded day it was cancelled when the
    /// last of what had settled it was reversed, for it could not be before.
    [[nodiscard]] bool isCancelled(const DividendBatch& batch) const
    {
        if (!batch.cancelled || batch.cancelledDate)
            return batch.cancelled && isOnOrBefore(*batch.cancelledDate, m_throughDay);
        const auto freed = m_lastFreed.find(batch.id);
        return freed == m_lastFreed.end() || isOnOrBefore(freed->second, m_throughDay);
    }

    [[nodiscard]] Failed whyInvalid(const DividendBatch& batch) const
    {
        if (!isAmount(batch.amountMinor))
            return invalidAmount;
        std::unordered_set<std::string_view> listed;
        std::int64_t sum = 0;
        std::int64_t ratios = 0;
        for (const auto& line : batch.lines) {
            if (line.amountMinor < 0 || line.amountMinor > Money::maximumMinor)
                return invalidAmount;
            if (line.ratioBps < 0 || line.ratioBps > BasisPoints::whole ||
                !m_participants.contains(line.participantID) || !listed.insert(line.participantID).second)
                return invalidState;
            if (const auto failed = grow(sum, line.amountMinor))
                return failed;
            ratios += line.ratioBps;
        }
        const bool isCancelledOnADay = !batch.cancelledDate || LedgerDay::isValid(*batch.cancelledDate);
        const bool isWhole = sum == batch.amountMinor && ratios == BasisPoints::whole;
        return isWhole && isCancelledOnADay && LedgerDay::isValid(batch.date) ? std::nullopt : Failed{invalidState};
    }

    Failed indexMovements()
    {
        for (const auto& movement : m_state.movements) {
            if (movement.currency != m_currency)
                continue;
            if (!isAmount(movement.amountMinor))
                return invalidAmount;
            if (!LedgerDay::isValid(movement.date) || !m_participants.contains(movement.participantID) ||
                !m_movements.emplace(movement.id, &movement).second)
                return invalidState;
            m_ordered.push_back(&movement);
        }
        for (const auto* movement : m_ordered) {
            if (!isReversalRightlyLinked(*movement))
                return invalidState;
            if (movement->reversedBy && movement->batchID) {
                auto& freed = m_lastFreed[*movement->batchID];
                freed = std::max(freed, std::string_view{find(movement->reversedBy)->date});
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] const DividendMovement* find(const std::optional<std::string>& id) const
    {
        const auto found = id ? m_movements.find(*id) : m_movements.end();
        return found == m_movements.end() ? nullptr : found->second;
    }

    [[nodiscard]] bool isReversalRightlyLinked(const DividendMovement& movement) const
    {
        if (movement.kind == Kind::reversal) {
            const auto* original = find(movement.reversalOf);
            return original && isReversalOf(movement, *original);
        }
        if (movement.reversalOf)
            return false;
        if (!movement.reversedBy)
            return true;
        const auto* reversal = find(movement.reversedBy);
        return reversal && isReversalOf(*reversal, movement);
    }

    /// Whether the movement had been made and not been undone by the day of the book. Links were verified before.
    [[nodiscard]] bool counts(const DividendMovement& movement) const
    {
        return movement.kind != Kind::reversal && isOnOrBefore(movement.date, m_throughDay) &&
               (!movement.reversedBy || !isOnOrBefore(find(movement.reversedBy)->date, m_throughDay));
    }

    /// What a movement settles must exist, belong to the same participant and not be cancelled.
    Failed settle(const DividendMovement& movement)
    {
        if (movement.kind == Kind::reversal)
            return std::nullopt;
        const bool settlesLine = movement.kind == Kind::payment || movement.kind == Kind::application;
        const bool usesAdvance = movement.kind == Kind::returning || movement.kind == Kind::application;
        if (!settlesLine && !usesAdvance && movement.kind != Kind::advance)
            return invalidState;
        if ((settlesLine && !namesLine(movement)) || (usesAdvance && !namesAdvance(movement)))
            return invalidState;
        if (!counts(movement))
            return std::nullopt;
        m_book.m_effective.push_back(&movement);
        if (settlesLine) {
            if (const auto failed = settleLine(movement))
                return failed;
        }
        return usesAdvance ? useAdvance(movement) : std::nullopt;
    }

    [[nodiscard]] bool namesLine(const DividendMovement& movement) const
    {
        const auto batch = movement.batchID ? m_batches.find(*movement.batchID) : m_batches.end();
        return batch != m_batches.end() &&
               std::ranges::find(batch->second->lines, movement.participantID, &DividendLine::participantID) !=
                   batch->second->lines.end();
    }

    [[nodiscard]] bool namesAdvance(const DividendMovement& movement) const
    {
        const auto* advance = find(movement.advanceID);
        return advance && advance->kind == Kind::advance && advance->participantID == movement.participantID;
    }

    Failed settleLine(const DividendMovement& movement)
    {
        const auto lines = movement.batchID ? m_book.m_lines.find(*movement.batchID) : m_book.m_lines.end();
        if (lines == m_book.m_lines.end())
            return invalidState; // a cancelled or later batch cannot have been settled
        auto& line = lines->second.at(movement.participantID);
        return grow(movement.kind == Kind::payment ? line.paidMinor : line.appliedMinor, movement.amountMinor);
    }

    Failed useAdvance(const DividendMovement& movement)
    {
        auto& advances = m_book.m_advanceRemaining;
        const auto advance = movement.advanceID ? advances.find(*movement.advanceID) : advances.end();
        if (advance == advances.end() || advance->second < movement.amountMinor)
            return invalidState;
        advance->second -= movement.amountMinor;
        return std::nullopt;
    }

    Failed closeLines()
    {
        for (auto& [batchID, lines] : m_book.m_lines) {
            for (auto& [participantID, line] : lines) {
                const auto settled = Money::add(line.appliedMinor, line.paidMinor);
                if (!settled)
                    return amountOverflow;
                if (*settled > line.entitlementMinor)
                    return invalidState;
                line.unpaidMinor = line.entitlementMinor - *settled;
            }
        }
        return std::nullopt;
    }

    DividendBook& m_book;
    const DividendState& m_state;
    std::string_view m_currency;
    std::optional<std::string_view> m_throughDay;
    std::unordered_set<std::string_view> m_participants;
    std::unordered_map<std::string_view, const DividendBatch*> m_batches;
    std::unordered_map<std::string_view, const DividendMovement*> m_movements;
    std::unordered_map<std::string_view, std::string_view> m_lastFreed; // by batch: when its last settlement was undone
    std::vector<const DividendMovement*> m_ordered;                     // of the currency, in the order of the section
};

std::expected<DividendBook, DividendError> DividendBook::create(const DividendState& state, std::string_view currency,
                                                                std::optional<std::string_view> throughDay)
{
    if (throughDay && !LedgerDay::isValid(*throughDay))
        return std::unexpected(invalidState);
    DividendBook book;
    if (const auto failed = Builder{book, state, currency, throughDay}.build())
        return std::unexpected(*failed);
    return book;
}

DividendLineSummary DividendBook::line(std::string_view batchID, std::string_view participantID) const
{
    const auto lines = m_lines.find(batchID);
    if (lines == m_lines.end())
        return {};
    const auto line = lines->second.find(participantID);
    return line == lines->second.end() ? DividendLineSummary{} : line->second;
}

std::int64_t DividendBook::advanceRemaining(std::string_view advanceID) const
{
    const auto found = m_advanceRemaining.find(advanceID);
    return found == m_advanceRemaining.end() ? 0 : found->second;
}
