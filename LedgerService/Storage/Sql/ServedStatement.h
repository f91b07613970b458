#pragma once

#include <deque>

#include <soci/soci.h>

#include "LedgerService/Storage/Sql/PreparedStatement.h"

namespace LedgerService {

/// A statement of a database that a server keeps.
class ServedStatement final : public PreparedStatement {
public:
    ServedStatement(soci::session& session, std::string_view sql);

    void bindText(std::string_view name, std::string_view value) override;
    void bindNumber(std::string_view name, std::int64_t value) override;
    void bindNull(std::string_view name, ValueKind kind) override;
    void addColumn(ValueKind kind) override;
    bool step() override;
    [[nodiscard]] bool isNull(std::size_t column) override;
    void takeText(std::size_t column, std::string& target) override;
    [[nodiscard]] std::int64_t number(std::size_t column) override;
    [[nodiscard]] std::int64_t affectedRows() override;
    bool finish() noexcept override;

private:
    /// A parameter or a column: the library reads and writes it in place, so its address stays.
    struct Slot {
        std::string text;
        long long number = 0;
        soci::indicator indicator = soci::i_ok;
    };

    Slot& parameter(std::string_view name, ValueKind kind);

    soci::statement m_statement;
    std::deque<Slot> m_parameters;
    std::deque<Slot> m_columns;
    bool m_started = false;
    bool m_exhausted = false;
};

}
