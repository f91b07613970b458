#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace LedgerService {

enum class ValueKind { text, number };

/// A statement kept for reuse. A run of it goes: bind, say what the columns are to be read as, take steps, finish.
class PreparedStatement {
public:
    PreparedStatement() = default;
    virtual ~PreparedStatement() = default;
    PreparedStatement(const PreparedStatement&) = delete;
    PreparedStatement& operator=(const PreparedStatement&) = delete;

    virtual void bindText(std::string_view name, std::string_view value) = 0;
    virtual void bindNumber(std::string_view name, std::int64_t value) = 0;
    virtual void bindNull(std::string_view name, ValueKind kind) = 0;

    /// The next column is read as this.
    virtual void addColumn(ValueKind kind) = 0;

    /// Runs the statement, or goes on to its next row; false when there is none (left).
    virtual bool step() = 0;

    [[nodiscard]] virtual bool isNull(std::size_t column) = 0;
    /// Moves or copies the column's text into `target`, whose room is used again.
    virtual void takeText(std::size_t column, std::string& target) = 0;
    [[nodiscard]] virtual std::int64_t number(std::size_t column) = 0;

    /// How many rows the run has changed.
    [[nodiscard]] virtual std::int64_t affectedRows() = 0;

    /// Ends the run, also in the middle of its rows; false when the statement cannot be run again.
    virtual bool finish() noexcept = 0;

    std::string_view key; // its text, as the connection keeps it
    bool onlyReads = false;
    bool inUse = false;
};

}
