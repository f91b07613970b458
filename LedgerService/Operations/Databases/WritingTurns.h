#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

/// Long work on a database in short transactions, between which others write.
class WritingTurns {
public:
    /// `between`: what happens between two turns; without it the work rests for as long as its turn took, so that those
    /// who wait in other processes come to theirs.
    explicit WritingTurns(Database& database, std::function<void()> between = nullptr);

    [[nodiscard]] Connection& connection() const { return *m_loan; }

    void begin();
    void end();
    /// Undoes what the turn has done so far, if there is one.
    void undo() { m_turn.reset(); }
    /// Ends the turn and, unless the program was told to end, begins another.
    void next();

private:
    using Steady = std::chrono::steady_clock;
    /// Gone in the order that matters: what was not committed is undone before others have their turn.
    struct Turn {
        explicit Turn(Database& database, Connection& connection);
        Database::Turn turn;
        Transaction transaction;
    };

    Database& m_database;
    Database::Loan m_loan;
    std::function<void()> m_between;
    Steady::time_point m_began;
    std::optional<Turn> m_turn;
};

}
