#pragma once

#include <memory>
#include <string>
#include <utility>

#include "LedgerCore/Client/Operations/OperationRunner.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"

/// How an operation signs in, or goes over from one company to another. Every failure is published.
class SessionRunner : public OperationRunner {
public:
    enum class Session { regular, demonstration };

    /// The reply opens a session, or says that the company still awaits its review.
    virtual QCoro::Task<Result<void>> signIn(std::string path, std::string body, Session session) = 0;
    /// Signs in by `login` and then goes over to the company of `entering`. Where that fails nobody is signed in.
    virtual QCoro::Task<Result<void>> signInAndEnter(std::string login, APIRequest entering) = 0;
    /// The reply is another company for the member who is signed in.
    virtual QCoro::Task<Result<void>> enter(APIRequest request) = 0;
    /// The reply is an application for another company, which is held from then on.
    virtual QCoro::Task<Result<PendingCompanyRegistration>> apply(APIRequest request) = 0;
    /// Asks for a record without a session.
    template <class Record>
    QCoro::Task<Result<Record>> askSignedOut(std::string path, std::string body);

protected:
    ~SessionRunner() = default;

    virtual QCoro::Task<Result<void>> postAndRead(APIRequest request, Reader read) = 0;
};

template <class Record>
QCoro::Task<Result<Record>> SessionRunner::askSignedOut(std::string path, std::string body)
{
    const auto record = std::make_shared<Record>();
    auto asking = postAndRead({.method = "POST", .path = std::move(path), .body = std::move(body)}, readerOf(record));
    const auto asked = co_await asking;
    if (!asked)
        co_return std::unexpected(asked.error());
    co_return std::move(*record);
}
