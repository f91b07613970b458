#pragma once

#include <map>
#include <string>
#include <vector>

#include "LedgerCore/Client/Session/SessionCredentialStore.h"

/// Keeps sessions in memory, remembers what it was asked for and fails when told to.
class RecordingCredentialStore final : public SessionCredentialStore {
public:
    QCoro::Task<Result<std::optional<SavedSession>>> readSession(std::string server) override;
    QCoro::Task<Result<void>> saveSession(SavedSession session, std::string server) override;
    QCoro::Task<Result<void>> deleteSession(std::string server) override;

    bool failsToRead = false;
    bool failsToSave = false;
    bool failsToDelete = false;
    std::map<std::string, SavedSession> sessions; // by service address
    std::vector<std::string> calls;               // such as "save http://127.0.0.1:4000"
};
