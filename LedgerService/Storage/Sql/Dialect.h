#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace LedgerService {

/// What one kind of database says otherwise than the others. Whatever else a statement says, each understands.
struct Dialect {
    enum class Engine : std::uint8_t { sqlite, postgresql };

    Engine engine;
    std::string_view beginReading; // one state of the database throughout
    std::string_view beginWriting; // ends as the only writer
    std::string_view beginMaking;  // of the schema, before there is anything that the only writer is known by

    /// That of the database with this name: the path of a file, or an address such as "postgresql://host/books".
    static const Dialect& of(std::string_view database);

    /// A statement that makes a part of the schema, which stands in the form that SQLite takes.
    [[nodiscard]] std::string making(std::string_view statement) const;

    [[nodiscard]] bool isFile() const { return engine == Engine::sqlite; }
};

/// How databases are named by those who operate the service.
namespace DatabaseName {

/// Whether it is the address of a database that a server keeps, and not the path of a file.
bool isAddress(std::string_view database);

/// The name as it may be shown: without a password.
std::string shown(std::string_view database);

}

}
