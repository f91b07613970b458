#include "Benchmarks/BareFigures.h"

#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"

using LedgerService::Connection;
using LedgerService::Query;

Samples bareServedCommits(const std::string& address, std::chrono::seconds duration)
{
    Connection connection{address};
    connection.execute("DROP SCHEMA IF EXISTS bare CASCADE");
    connection.execute("CREATE SCHEMA bare");
    connection.execute("CREATE TABLE bare.rows (note TEXT NOT NULL)");
    Samples samples;
    const auto end = std::chrono::steady_clock::now() + duration;
    while (std::chrono::steady_clock::now() < end)
        samples.time([&] { Query{connection, "INSERT INTO bare.rows (note) VALUES ('paper and toner')"}.run(); });
    connection.execute("DROP SCHEMA bare CASCADE");
    return samples;
}
