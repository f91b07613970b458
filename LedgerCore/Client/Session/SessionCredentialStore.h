#pragma once

#include <optional>
#include <string>

#include <QCoro/QCoroTask>
#include <boost/describe.hpp>

#include "LedgerCore/Client/Errors/Failure.h"

/// What survives a restart: nothing but the token.
struct SavedSession {
    std::string token;
    bool isDemo = false;

    bool operator==(const SavedSession&) const = default;
};
BOOST_DESCRIBE_STRUCT(SavedSession, (), (token, isDemo))

/// Keeps one session per service address. Every failure is an `APIError` "KEYCHAIN_UNAVAILABLE".
class SessionCredentialStore {
public:
    virtual ~SessionCredentialStore() = default;

    virtual QCoro::Task<Result<std::optional<SavedSession>>> readSession(std::string server) = 0;
    virtual QCoro::Task<Result<void>> saveSession(SavedSession session, std::string server) = 0;
    virtual QCoro::Task<Result<void>> deleteSession(std::string server) = 0;
};
