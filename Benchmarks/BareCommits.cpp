#include "Benchmarks/BareFigures.h"

#include <filesystem>
#include <memory>
#include <stdexcept>

#include <sqlite3.h>

namespace {

/// More pages than the log holds before it starts over: from then on commits do not make its file longer.
constexpr auto growLog = "CREATE TABLE filler (bytes BLOB); INSERT INTO filler VALUES (zeroblob(5000000))";

struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

void remove(const std::string& file)
{
    for (const auto* each : {"", "-wal", "-shm"})
        std::filesystem::remove(file + each);
}

void run(sqlite3* database, const char* sql)
{
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(database));
}

}

Samples bareCommits(const std::string& databaseFile, std::chrono::seconds duration)
{
    remove(databaseFile);
    Samples samples;
    {
        sqlite3* opened = nullptr;
        const int result = sqlite3_open(databaseFile.c_str(), &opened);
        const std::unique_ptr<sqlite3, Close> database{opened};
        if (result != SQLITE_OK)
            throw std::runtime_error("cannot open " + databaseFile);
        run(opened, "PRAGMA journal_mode = WAL");
        run(opened, "PRAGMA synchronous = FULL");
        run(opened, "CREATE TABLE rows (id INTEGER PRIMARY KEY, note TEXT NOT NULL)");
        run(opened, growLog);
        sqlite3_stmt* made = nullptr;
        sqlite3_prepare_v2(opened, "INSERT INTO rows (note) VALUES ('paper and toner')", -1, &made, nullptr);
        const std::unique_ptr<sqlite3_stmt, Close> insert{made};
        const auto end = std::chrono::steady_clock::now() + duration;
        while (std::chrono::steady_clock::now() < end) {
            samples.time([&] {
                if (sqlite3_step(insert.get()) != SQLITE_DONE || sqlite3_reset(insert.get()) != SQLITE_OK)
                    throw std::runtime_error(sqlite3_errmsg(opened));
            });
        }
    }
    remove(databaseFile);
    return samples;
}
