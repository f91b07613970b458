#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <thread>

#include "LedgerService/Operations/Databases/WritingTurns.h"
#include "LedgerService/Storage/Rows/Companies/ArrivalRepository.h"

namespace LedgerService {

/// A company that comes into a database some rows at a time, unseen until it is opened. What is not opened is removed
/// again, in turns too; what a process that was killed has left, the next import and every service remove.
class CompanyArrival {
public:
    struct Pace {
        std::size_t rows = 2'000;                // in one turn
        std::function<void()> between = nullptr; // as of `WritingTurns`
    };

    /// Throws when another company is arriving.
    CompanyArrival(Database& database, const std::string& companyID, Pace pace);
    ~CompanyArrival();
    CompanyArrival(const CompanyArrival&) = delete;
    CompanyArrival& operator=(const CompanyArrival&) = delete;

    /// Copies the company from there; `mayCome` is asked in the first turn and throws when it may not.
    void copy(Connection& from, const std::function<void(Connection&)>& mayCome);

    /// From now on the company is there, with this status; `last` writes in the same transaction.
    void open(const std::optional<std::string>& approvalStatus, const std::function<void(Connection&)>& last);

    /// Removes companies whose arrival has ended in the middle; how many.
    static int sweepAbandoned(Database& database);
    /// The same for all that are arriving, in a database that nobody else uses.
    static int sweepAll(Database& database);

private:
    void requireOurs();
    void sayThatWeWork(const std::stop_token& stopping);
    [[nodiscard]] Arrival arrivalNow() const;

    Database& m_database;
    std::string m_companyID;
    std::string m_hands;
    Pace m_pace;
    WritingTurns m_turns;
    bool m_opened = false;
    std::jthread m_sign; // that the work goes on, however long it is between two turns
};

}
