#pragma once

#include <vector>

#include "LedgerService/Storage/Sql/PreparedStatement.h"

namespace sqlite_api {
struct sqlite3;
struct sqlite3_stmt;
}

namespace LedgerService {

/// A statement of a database in a file. It speaks to the engine itself: values reach it and leave it without an object
/// for each, which is most of what reading a long list costs otherwise.
class FileStatement final : public PreparedStatement {
public:
    /// Throws `soci::sqlite3_soci_error` when the text is no statement, as `step` does when the run fails.
    FileStatement(sqlite_api::sqlite3* database, std::string_view sql);
    ~FileStatement() override;

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
    struct Place {
        std::string name;
        int index = 0;
    };

    [[nodiscard]] int place(std::string_view name);
    void check(int result);

    sqlite_api::sqlite3* m_database;
    sqlite_api::sqlite3_stmt* m_statement = nullptr;
    int m_columns = 0;
    std::vector<std::string> m_texts; // that are bound, by their parameters: the engine reads them where they are
    std::vector<Place> m_places;      // in the order in which they were bound the last time
    std::size_t m_bound = 0;          // of them in this run
};

}
