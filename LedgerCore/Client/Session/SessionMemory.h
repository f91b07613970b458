#pragma once

#include <map>

#include "LedgerCore/Client/Session/SessionCredentialStore.h"

/// Keeps sessions until the process ends, where no keychain is to be had.
class SessionMemory final : public SessionCredentialStore {
public:
    QCoro::Task<Result<std::optional<SavedSession>>> readSession(std::string server) override;
    QCoro::Task<Result<void>> saveSession(SavedSession session, std::string server) override;
    QCoro::Task<Result<void>> deleteSession(std::string server) override;

private:
    std::map<std::string, SavedSession> m_sessions;
};
