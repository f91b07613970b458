#include "LedgerService/Operations/Databases/DatabaseOption.h"

#include <CLI/CLI.hpp>

#include "LedgerService/Operations/Databases/DatabaseFile.h"

namespace LedgerService {

void DatabaseOption::addTo(CLI::App& command, std::string& name, Takes takes)
{
    if (takes == Takes::anyDatabase) {
        command
            .add_option("--database", name,
                        "The SQLite file, or a database of PostgreSQL as postgresql://USER@HOST/NAME; several hosts "
                        "with commas between them")
            ->required()
            ->type_name("DATABASE");
        return;
    }
    command.add_option("--database", name, "The SQLite file")
        ->required()
        ->type_name("FILE")
        ->check([](const std::string& given) { return DatabaseFile::whyNotFile(given).value_or(""); }, "");
}

void DatabaseOption::addFiles(CLI::App& command, std::string& files)
{
    command
        .add_option(
            "--files", files,
            "Receipts and seals are kept in PATH-receipts and PATH-seals: with PostgreSQL, where all services of the "
            "database share them; with a file they are beside it, unless it was served with this option")
        ->type_name("PATH");
}

}
