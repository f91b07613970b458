#include "LedgerCore/Client/Session/SessionMemory.h"

#include <utility>

QCoro::Task<Result<std::optional<SavedSession>>> SessionMemory::readSession(std::string server)
{
    const auto found = m_sessions.find(server);
    if (found == m_sessions.end())
        co_return std::optional<SavedSession>{};
    co_return std::optional{found->second};
}

QCoro::Task<Result<void>> SessionMemory::saveSession(SavedSession session, std::string server)
{
    m_sessions.insert_or_assign(std::move(server), std::move(session));
    co_return Result<void>{};
}

QCoro::Task<Result<void>> SessionMemory::deleteSession(std::string server)
{
    m_sessions.erase(server);
    co_return Result<void>{};
}
