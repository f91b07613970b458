#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace LedgerService {

class Database;

/// What a service has to do from time to time beside answering: a thread with a connection of its own does it, at the
/// start and every few minutes. What fails is told in the log and tried again.
class Upkeep {
public:
    /// `files`: what receipts and seals are kept beside.
    Upkeep(std::string files, std::unique_ptr<Database> database);
    ~Upkeep();
    Upkeep(const Upkeep&) = delete;
    Upkeep& operator=(const Upkeep&) = delete;

private:
    void run(const std::stop_token& stopping);
    void attempt(void (Upkeep::*work)());
    void sweepArrivals();
    void sweepDemonstrations();
    void sweepReceipts();
    void sealAuditTrail();

    std::string m_files;
    std::unique_ptr<Database> m_database;
    std::mutex m_guard;
    std::condition_variable_any m_changed;
    std::jthread m_thread; // after what it uses
};

}
