#include "LedgerService/Operations/Archives/CompanyArrival.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <vector>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Interruption.h"
#include "LedgerService/Log.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRows.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"

namespace LedgerService {

namespace {

using System = std::chrono::system_clock;

constexpr std::chrono::seconds betweenSigns{10};
/// Whoever has given no sign for so long is gone.
constexpr std::chrono::minutes longestSilence{2};
constexpr std::size_t rowsRemovedAtOnce = 2'000;

std::string now()
{
    return LedgerDay::stamp(System::now());
}

/// Removes the audit trail of a company that is not there. It may have come by somebody else's hands between two turns.
void removeTrailLeft(WritingTurns& turns, const std::string& companyID)
{
    while (!CompanyRepository::find(turns.connection(), companyID) &&
           ArrivalRepository::removePartOfTrail(turns.connection(), companyID, rowsRemovedAtOnce))
        turns.next();
}

/// Removes, turn by turn, what has arrived; others may have done so meanwhile.
void remove(WritingTurns& turns, const Arrival& arrival)
{
    const auto isOurs = [&] { return ArrivalRepository::replace(turns.connection(), arrival, arrival); };
    turns.begin();
    while (isOurs() && ArrivalRepository::removePart(turns.connection(), arrival, rowsRemovedAtOnce))
        turns.next();
    removeTrailLeft(turns, arrival.companyID);
    turns.end();
}

/// Takes the company out of the hands that have let go of it.
bool take(WritingTurns& turns, const Arrival& left, const Arrival& taken, const std::string& silentSince)
{
    turns.begin();
    const auto arriving = ArrivalRepository::all(turns.connection());
    const auto found = std::ranges::find(arriving, left.companyID, &Arrival::companyID);
    const bool still = found != arriving.end() && found->hands == left.hands && found->stamp <= silentSince &&
                       ArrivalRepository::replace(turns.connection(), left, taken);
    turns.end();
    return still;
}

/// People of two companies that arrive could collide, which nobody would find.
void requireNoOther(Connection& connection)
{
    if (!ArrivalRepository::all(connection).empty())
        throw std::runtime_error(
            "a company is being imported by another process; one that was killed makes way within two minutes");
}

std::vector<Arrival> arriving(Database& database)
{
    const auto loan = database.borrow();
    return ArrivalRepository::all(*loan);
}

int sweep(Database& database, const std::string& silentSince)
{
    int swept = 0;
    for (const auto& left : arriving(database)) {
        if (left.stamp > silentSince)
            continue;
        const Arrival taken{.companyID = left.companyID, .hands = Random::identifier(), .stamp = now()};
        WritingTurns turns{database};
        if (take(turns, left, taken, silentSince)) {
            remove(turns, taken);
            swept += 1;
        }
    }
    return swept;
}

}

CompanyArrival::CompanyArrival(Database& database, const std::string& companyID, Pace pace)
    : m_database(database), m_companyID(companyID), m_hands(Random::identifier()), m_pace(std::move(pace)),
      m_turns(database, m_pace.between)
{
    sweepAbandoned(database);
    m_turns.begin();
    requireNoOther(m_turns.connection());
    removeTrailLeft(m_turns, companyID); // of one that was removed in part
    m_turns.end();
    m_sign = std::jthread{[this](const std::stop_token& stopping) { sayThatWeWork(stopping); }};
}

CompanyArrival::~CompanyArrival()
{
    m_turns.undo();
    m_sign = {};
    if (m_opened)
        return;
    try {
        const Interruption::Shield tidying;
        WritingTurns turns{m_database};
        remove(turns, arrivalNow());
    } catch (const std::exception& failure) { // the next import and every service try again
        Log::failure("(import)", DatabaseFailure::words(failure));
    }
}

Arrival CompanyArrival::arrivalNow() const
{
    return {.companyID = m_companyID, .hands = m_hands, .stamp = now()};
}

void CompanyArrival::sayThatWeWork(const std::stop_token& stopping)
{
    std::mutex guard;
    std::condition_variable_any changed;
    std::unique_lock held{guard};
    while (!changed.wait_for(held, stopping, betweenSigns, [&] { return stopping.stop_requested(); })) {
        try {
            WritingTurns turns{m_database};
            turns.begin();
            ArrivalRepository::replace(turns.connection(), arrivalNow(), arrivalNow());
            turns.end();
        } catch (const std::exception& failure) { // the next sign may come through
            Log::failure("(import)", DatabaseFailure::words(failure));
        }
    }
}

void CompanyArrival::requireOurs()
{
    if (!ArrivalRepository::replace(m_turns.connection(), arrivalNow(), arrivalNow()))
        throw std::runtime_error("it took so long that another process has removed it");
}

void CompanyArrival::copy(Connection& from, const std::function<void(Connection&)>& mayCome)
{
    const auto arrival = arrivalNow();
    m_turns.begin();
    requireNoOther(m_turns.connection()); // it may have begun since
    mayCome(m_turns.connection());
    CompanyRows::copy(from, m_turns.connection(), m_companyID,
                      {.arrival = &arrival, .rowsAtOnce = m_pace.rows, .between = [this] {
                           m_turns.next();
                           requireOurs();
                       }});
    m_turns.end();
}

void CompanyArrival::open(const std::optional<std::string>& approvalStatus,
                          const std::function<void(Connection&)>& last)
{
    Interruption::heed();
    m_turns.begin();
    requireOurs();
    ArrivalRepository::open(m_turns.connection(), arrivalNow(), approvalStatus);
    last(m_turns.connection());
    m_turns.end();
    m_opened = true;
}

int CompanyArrival::sweepAbandoned(Database& database)
{
    return sweep(database, LedgerDay::stamp(System::now() - longestSilence));
}

int CompanyArrival::sweepAll(Database& database)
{
    return sweep(database, "~"); // after every stamp
}

}
