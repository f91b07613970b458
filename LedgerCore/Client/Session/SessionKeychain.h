#pragma once

#include <chrono>

#include "LedgerCore/Client/Session/SessionCredentialStore.h"

/// Keeps sessions in the system's keychain, one item for each service address. Nobody is ever asked for a password: a
/// keychain that is locked or missing counts as unavailable, and so does one that does not answer in time. Calls run on
/// a thread of their own.
class SessionKeychain final : public SessionCredentialStore {
public:
    explicit SessionKeychain(std::chrono::milliseconds patience = std::chrono::seconds{10}) : m_patience{patience} {}

    QCoro::Task<Result<std::optional<SavedSession>>> readSession(std::string server) override;
    QCoro::Task<Result<void>> saveSession(SavedSession session, std::string server) override;
    QCoro::Task<Result<void>> deleteSession(std::string server) override;

private:
    std::chrono::milliseconds m_patience;
};
