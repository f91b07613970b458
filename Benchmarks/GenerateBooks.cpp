#include <fstream>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "Benchmarks/BookGenerator.h"
#include "Benchmarks/PlainTextJournal.h"
#include "LedgerCore/Domain/Json/Json.h"

namespace {

bool write(const std::string& path, const std::string& text)
{
    std::ofstream file{path, std::ios::binary};
    file << text;
    return file.flush().good();
}

}

/// Writes generated books as files to measure on.
int main(int argc, char** argv)
{
    std::size_t entries = 100'000;
    std::string snapshot;
    std::string journal;
    CLI::App app{"Writes the same large books as a snapshot and as a plain-text journal."};
    app.add_option("--entries", entries, "How many entries");
    app.add_option("--snapshot", snapshot, "The snapshot's file");
    app.add_option("--journal", journal, "The journal's file");
    CLI11_PARSE(app, argc, argv);

    const auto books = BookGenerator::books(entries);
    const bool isWritten = (snapshot.empty() || write(snapshot, Json::encode(books))) &&
                           (journal.empty() || write(journal, PlainTextJournal::render(books)));
    if (!isWritten)
        std::cerr << "The files could not be written.\n";
    return isWritten ? 0 : 1;
}
