#include "LedgerService/Operations/Serving/ServiceGauges.h"

#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

#include "LedgerService/Http/Connections/Server.h"
#include "LedgerService/Log.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Entries/ReceiptSpace.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Dialect.h"

namespace LedgerService {

ServiceGauges::ServiceGauges(Server& server, Database& database, std::string name)
    : m_server(server), m_database(database), m_name(std::move(name))
{
}

std::vector<Metrics::Gauge> ServiceGauges::now() const
{
    std::vector<Metrics::Gauge> gauges;
    addLoad(gauges);
    addSpace(gauges);
    return gauges;
}

void ServiceGauges::addLoad(std::vector<Metrics::Gauge>& gauges) const
{
    const auto load = m_server.load();
    if (!load)
        return;
    const auto add = [&](std::string_view name, double value) { gauges.push_back({name, value}); };
    for (std::size_t each = 0; each < ServerLoad::phases.size(); ++each)
        gauges.push_back(
            {Metrics::connections, static_cast<double>(load->connections.at(each)), ServerLoad::phases.at(each)});
    add(Metrics::commandsWaiting, static_cast<double>(load->commandsWaiting));
    add(Metrics::oldestCommand, std::chrono::duration<double>{load->longest}.count());
    add(Metrics::signInsWaiting, static_cast<double>(load->signInsWaiting));
    add(Metrics::bodyBytes, static_cast<double>(load->bodyBytes));
    add(Metrics::replyBytes, static_cast<double>(load->replyBytes));
    if (load->certificateEnds)
        add(Metrics::certificateEnd, std::chrono::duration<double>{load->certificateEnds->time_since_epoch()}.count());
}

void ServiceGauges::addSpace(std::vector<Metrics::Gauge>& gauges) const
{
    if (!DatabaseName::isAddress(m_name)) {
        std::error_code missing;
        const auto file = std::filesystem::file_size(m_name, missing);
        gauges.push_back({Metrics::databaseBytes, missing ? 0. : static_cast<double>(file)});
        const auto log = std::filesystem::file_size(m_name + "-wal", missing);
        gauges.push_back({Metrics::logBytes, missing ? 0. : static_cast<double>(log)});
    }
    try {
        const auto loan = m_database.borrow();
        const auto bytes = Anew::onConflict([&] { return ReceiptSpace::ofAll(*loan); });
        gauges.push_back({Metrics::receiptBytes, static_cast<double>(bytes)});
    } catch (const std::exception& failure) {
        Log::failure("(figures)", DatabaseFailure::words(failure));
    }
}

}
