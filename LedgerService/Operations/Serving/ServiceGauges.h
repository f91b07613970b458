#pragma once

#include <string>
#include <vector>

#include "LedgerService/Metrics.h"

namespace LedgerService {

class Database;
class Server;

/// How a service stands: what waits, what is open, what it takes of the disk. Whatever cannot be told is left out.
class ServiceGauges {
public:
    /// `name` is that of the database.
    ServiceGauges(Server& server, Database& database, std::string name);

    [[nodiscard]] std::vector<Metrics::Gauge> now() const;

private:
    void addLoad(std::vector<Metrics::Gauge>& gauges) const;
    void addSpace(std::vector<Metrics::Gauge>& gauges) const;

    Server& m_server;
    Database& m_database;
    std::string m_name;
};

}
