#include "LedgerCore/Domain/Reports/ReportMovements.h"

#include <utility>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"

Movement movementOf(std::string_view entryKind)
{
    for (const auto movement : allMovements) {
        if (movement != Movement::other && rawValue(movement) == entryKind)
            return movement;
    }
    return Movement::other;
}

std::string_view rawValue(Movement movement)
{
    switch (movement) {
    case Movement::income:
        return EntryKind::income;
    case Movement::expense:
        return EntryKind::expense;
    case Movement::refund:
        return EntryKind::refund;
    case Movement::transfer:
        return EntryKind::transfer;
    case Movement::exchange:
        return EntryKind::exchange;
    case Movement::opening:
        return EntryKind::opening;
    case Movement::capital:
        return EntryKind::capital;
    case Movement::dividend:
        return EntryKind::dividend;
    case Movement::other:
        return "other";
    }
    std::unreachable();
}

std::int64_t ReportMovements::incomeMinor() const
{
    return (*this)[Movement::income].netMinor() + (*this)[Movement::refund].netMinor();
}

std::int64_t ReportMovements::expenseMinor() const
{
    return (*this)[Movement::expense].netMinor();
}

std::int64_t ReportMovements::otherMinor() const
{
    return netMinor() - incomeMinor() - expenseMinor();
}

std::int64_t ReportMovements::netMinor() const
{
    std::int64_t sum = 0;
    for (const auto& figure : figures)
        sum += figure.netMinor();
    return sum;
}

std::int64_t ReportMovements::reversedMinor() const
{
    std::int64_t sum = 0;
    for (const auto& figure : figures)
        sum += figure.reversedMinor;
    return sum;
}
