#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// What moves money, as reports tell it apart.
enum class Movement : std::uint8_t { income, expense, refund, transfer, exchange, opening, capital, dividend, other };

inline constexpr std::array allMovements{Movement::income,   Movement::expense,  Movement::refund,
                                         Movement::transfer, Movement::exchange, Movement::opening,
                                         Movement::capital,  Movement::dividend, Movement::other};

/// The movement that an entry of this kind makes. Reversals are told by their original and not asked for here.
Movement movementOf(std::string_view entryKind);

/// The stable name of a movement, for machine-readable reports.
std::string_view rawValue(Movement movement);

/// Money of one movement in signed minor units: what its entries moved, and what reversals of such entries moved
/// back in the same period, whenever the entries themselves were booked.
struct MovementFigure {
    std::int64_t bookedMinor = 0;
    std::int64_t reversedMinor = 0;

    bool operator==(const MovementFigure&) const = default;

    [[nodiscard]] std::int64_t netMinor() const { return bookedMinor + reversedMinor; }
};

/// All money that moved, by movement. Negative left the accounts, positive arrived.
struct ReportMovements {
    std::array<MovementFigure, allMovements.size()> figures{};

    bool operator==(const ReportMovements&) const = default;

    [[nodiscard]] const MovementFigure& operator[](Movement movement) const
    {
        return figures[static_cast<std::size_t>(movement)];
    }
    [[nodiscard]] MovementFigure& operator[](Movement movement) { return figures[static_cast<std::size_t>(movement)]; }

    /// Income after reversals, less refunds.
    [[nodiscard]] std::int64_t incomeMinor() const;
    /// Expense after reversals, at most 0 unless more was reversed than spent.
    [[nodiscard]] std::int64_t expenseMinor() const;
    /// Everything that is neither income nor expense.
    [[nodiscard]] std::int64_t otherMinor() const;
    [[nodiscard]] std::int64_t netMinor() const;
    /// All reversals, of whatever they undo.
    [[nodiscard]] std::int64_t reversedMinor() const;
};
