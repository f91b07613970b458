#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "LedgerCore/Client/Http/APIClient.h"

/// How an operation of the store asks the service: one at a time and signed in, with `isBusy`, the end of an expired
/// session and the message of a failure. Families of operations are written with it, one function each, and have
/// nothing to look after when the reply is there.
class OperationRunner {
public:
    enum class Publishing { off, on };
    static Publishing publishing(bool publishError) { return publishError ? Publishing::on : Publishing::off; }

    /// The reply is the new snapshot, which replaces the held one.
    virtual QCoro::Task<Result<void>> change(APIRequest request, Publishing publishing) = 0;
    /// The reply is the new snapshot beside the identifier of what was created, which is given.
    virtual QCoro::Task<Result<std::string>> create(APIRequest request, Publishing publishing) = 0;
    /// The reply says no more than that the command is carried out; the snapshot is loaded anew.
    virtual QCoro::Task<Result<void>> submit(APIRequest request, Publishing publishing) = 0;
    /// The reply is a record, and the books stay as they are.
    template <class Record>
    QCoro::Task<Result<Record>> ask(APIRequest request, Publishing publishing);

protected:
    ~OperationRunner() = default;

    /// Reads a reply, on a worker where it is large; false where it is not what it should be.
    using Reader = std::function<bool(const std::string& body)>;
    virtual QCoro::Task<Result<void>> askAndRead(APIRequest request, Publishing publishing, Reader read) = 0;
};

template <class Record>
QCoro::Task<Result<Record>> OperationRunner::ask(APIRequest request, Publishing publishing)
{
    const auto record = std::make_shared<Record>();
    auto asking = askAndRead(std::move(request), publishing, [record](const std::string& body) {
        auto decoded = Json::decode<Record>(body);
        if (decoded)
            *record = std::move(*decoded);
        return decoded.has_value();
    });
    const auto asked = co_await asking;
    if (!asked)
        co_return std::unexpected(asked.error());
    co_return std::move(*record);
}
