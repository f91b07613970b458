#include "LedgerCore/Client/testing/RecordingCredentialStore.h"

#include <utility>

namespace {

Failure unavailable()
{
    return clientError(ClientCode::keychainUnavailable);
}

}

QCoro::Task<Result<std::optional<SavedSession>>> RecordingCredentialStore::readSession(std::string server)
{
    calls.push_back("read " + server);
    if (failsToRead)
        co_return std::unexpected(unavailable());
    const auto found = sessions.find(server);
    co_return found == sessions.end() ? std::optional<SavedSession>{} : std::optional{found->second};
}

QCoro::Task<Result<void>> RecordingCredentialStore::saveSession(SavedSession session, std::string server)
{
    calls.push_back("save " + server);
    if (failsToSave)
        co_return std::unexpected(unavailable());
    sessions.insert_or_assign(std::move(server), std::move(session));
    co_return Result<void>{};
}

QCoro::Task<Result<void>> RecordingCredentialStore::deleteSession(std::string server)
{
    calls.push_back("delete " + server);
    if (failsToDelete)
        co_return std::unexpected(unavailable());
    sessions.erase(server);
    co_return Result<void>{};
}
