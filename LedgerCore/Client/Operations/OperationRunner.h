#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Session/KeptCommands.h"

struct LedgerSnapshot;

/// How an operation of the store asks the service: one at a time and signed in, with `isBusy`, the end of an expired
/// session and the message of a failure. Families of operations are written with it, one function each, and have
/// nothing to look after when the reply is there.
class OperationRunner {
public:
    enum class Publishing { off, on };
    static Publishing publishing(bool publishError) { return publishError ? Publishing::on : Publishing::off; }

    /// The tag of the interface language in force.
    [[nodiscard]] virtual std::string locale() const = 0;
    /// Today's day here.
    [[nodiscard]] virtual std::string today() const = 0;

    /// The reply is the new snapshot, which replaces the held one.
    virtual QCoro::Task<Result<void>> change(APIRequest request, Publishing publishing) = 0;
    /// The reply is the new snapshot beside the identifier of what was created, which is given.
    virtual QCoro::Task<Result<std::string>> create(APIRequest request, Publishing publishing) = 0;
    /// The reply says no more than that the command is carried out; the snapshot is loaded anew.
    virtual QCoro::Task<Result<void>> submit(APIRequest request, Publishing publishing) = 0;
    /// The same for a command that is kept beyond the session while its outcome is open.
    virtual QCoro::Task<Result<void>> submitSection(SectionCommand command, Publishing publishing) = 0;
    /// The reply is a record, and the books stay as they are.
    template <class Record>
    QCoro::Task<Result<Record>> ask(APIRequest request, Publishing publishing);
    /// The same beside the operations, as a quiet reload goes: it gives way to one that runs or begins.
    template <class Record>
    QCoro::Task<Result<Record>> askQuietly(APIRequest request);
    /// Beside whatever runs or begins, and without a word: also the end of a session is left to the next operation.
    template <class Record>
    QCoro::Task<Result<Record>> askBeside(APIRequest request);

    /// What is made, on a worker, of the books as the service has them now.
    template <class Value>
    using FromBooks = std::function<Result<Value>(const LedgerSnapshot&)>;
    template <class Value>
    QCoro::Task<Result<Value>> fromFreshBooks(Publishing publishing, FromBooks<Value> make);
    virtual QCoro::Task<Result<void>> checkFreshBooks(Publishing publishing, FromBooks<void> check) = 0;

protected:
    ~OperationRunner() = default;

    /// Reads a reply, on a worker where it is large; false where it is not what it should be.
    using Reader = std::function<bool(const std::string& body)>;
    template <class Record>
    static Reader readerOf(std::shared_ptr<Record> record);
    virtual QCoro::Task<Result<void>> askAndRead(APIRequest request, Publishing publishing, Reader read) = 0;
    virtual QCoro::Task<Result<void>> askAndReadQuietly(APIRequest request, Reader read) = 0;
    virtual QCoro::Task<Result<void>> askAndReadBeside(APIRequest request, Reader read) = 0;
};

template <class Record>
OperationRunner::Reader OperationRunner::readerOf(std::shared_ptr<Record> record)
{
    return [record = std::move(record)](const std::string& body) {
        auto decoded = Json::decode<Record>(body);
        if (decoded)
            *record = std::move(*decoded);
        return decoded.has_value();
    };
}

template <class Record>
QCoro::Task<Result<Record>> OperationRunner::ask(APIRequest request, Publishing publishing)
{
    const auto record = std::make_shared<Record>();
    auto asking = askAndRead(std::move(request), publishing, readerOf(record));
    const auto asked = co_await asking;
    if (!asked)
        co_return std::unexpected(asked.error());
    co_return std::move(*record);
}

template <class Record>
QCoro::Task<Result<Record>> OperationRunner::askQuietly(APIRequest request)
{
    const auto record = std::make_shared<Record>();
    auto asking = askAndReadQuietly(std::move(request), readerOf(record));
    const auto asked = co_await asking;
    if (!asked)
        co_return std::unexpected(asked.error());
    co_return std::move(*record);
}

template <class Record>
QCoro::Task<Result<Record>> OperationRunner::askBeside(APIRequest request)
{
    const auto record = std::make_shared<Record>();
    auto asking = askAndReadBeside(std::move(request), readerOf(record));
    const auto asked = co_await asking;
    if (!asked)
        co_return std::unexpected(asked.error());
    co_return std::move(*record);
}

template <class Value>
QCoro::Task<Result<Value>> OperationRunner::fromFreshBooks(Publishing publishing, FromBooks<Value> make)
{
    const auto value = std::make_shared<Value>();
    auto making =
        checkFreshBooks(publishing, [make = std::move(make), value](const LedgerSnapshot& books) -> Result<void> {
            auto made = make(books);
            if (!made)
                return std::unexpected(made.error());
            *value = std::move(*made);
            return {};
        });
    const auto made = co_await making;
    if (!made)
        co_return std::unexpected(made.error());
    co_return std::move(*value);
}
