#include "LedgerService/Operations/Databases/WritingTurns.h"

#include <thread>
#include <utility>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Interruption.h"

namespace LedgerService {

WritingTurns::Turn::Turn(Database& database, Connection& connection)
    : turn(database, Database::Instant::clock::now() + Patience::whole), transaction(connection, turn.until())
{
}

WritingTurns::WritingTurns(Database& database, std::function<void()> between)
    : m_database(database), m_loan(database.borrow()), m_between(std::move(between))
{
}

void WritingTurns::begin()
{
    m_turn.emplace(m_database, *m_loan);
    m_began = Steady::now(); // what was waited for the turn does not count
}

void WritingTurns::end()
{
    promised(m_turn, "a turn that ends has begun").transaction.commit();
    m_turn.reset();
}

void WritingTurns::next()
{
    end();
    Interruption::heed();
    if (m_between)
        m_between();
    else
        std::this_thread::sleep_for(Steady::now() - m_began);
    begin();
}

}
