#include <memory>
#include <set>

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Client/Session/LanguageDefaults.h"
#include "LedgerCore/Client/Session/SessionMemory.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/testing/FixedClock.h"
#include "LedgerCore/Client/testing/SequentialIdentifiers.h"
#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerService/testing/ServiceProcess.h"
#include "LedgerService/testing/TestService.h"

using namespace LedgerService;

namespace {

constexpr std::size_t rows = 1000;

/// The line to the service, which loses the reply to one of the entries that are sent: the entry arrives and is
/// recorded, and the program never hears of it.
class Line {
public:
    Line()
    {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { carry(); });
    }

    [[nodiscard]] std::string address() const { return fmt::format("http://127.0.0.1:{}", m_server.serverPort()); }
    void leadTo(std::uint16_t port) { m_service = port; }
    /// Of the entries that are sent from now on, the one of this number; 0 loses none.
    void loseReply(std::size_t entry) { m_until = entry; }

private:
    void carry()
    {
        auto* const program = m_server.nextPendingConnection();
        auto* const service = new QTcpSocket{program};
        const auto isLost = std::make_shared<bool>(false);
        service->connectToHost(QHostAddress{QHostAddress::LocalHost}, m_service);
        QObject::connect(program, &QTcpSocket::readyRead, service, [this, program, service, isLost] {
            const auto asked = program->readAll();
            *isLost = asked.startsWith("POST /v1/transactions ") && m_until > 0 && --m_until == 0;
            service->write(asked);
        });
        QObject::connect(service, &QTcpSocket::readyRead, program, [program, service, isLost] {
            const auto answered = service->readAll();
            if (*isLost)
                program->abort();
            else
                program->write(answered);
        });
        QObject::connect(service, &QTcpSocket::disconnected, program, &QTcpSocket::disconnectFromHost);
        QObject::connect(service, &QTcpSocket::errorOccurred, program, [program] { program->abort(); });
        QObject::connect(program, &QTcpSocket::disconnected, program, &QObject::deleteLater);
    }

    QTcpServer m_server;
    std::uint16_t m_service = 0;
    std::size_t m_until = 0;
};

/// What breaks an import, by the number of the row at which it does; 0 where it does not.
struct Break {
    std::size_t replyLost = 0;
    std::size_t serviceKilled = 0;
    std::size_t windowClosed = 0;
    std::size_t stopped = 0;
};

/// A window that is opened anew for each attempt, as a person opens it.
struct Window {
    explicit Window(const std::string& address)
        : store{std::make_unique<LedgerStore>(address, LedgerStore::Environment{.credentials = credentials,
                                                                                .languageDefaults = language,
                                                                                .clock = clock,
                                                                                .identifiers = identifiers})}
    {
        EXPECT_TRUE(resultOf(store->login("mira@sample.example", TestService::password)));
    }

    SessionMemory credentials;
    LanguageMemory language;
    FixedClock clock;
    SequentialIdentifiers identifiers;
    std::unique_ptr<LedgerStore> store;
};

/// The service on one database, the line to it and a file that is imported again after every break.
class Import {
public:
    Import() { m_founded.stop(); }

    /// How many rows were confirmed before the import ended, and whether it came to its end.
    struct Outcome {
        std::size_t confirmed = 0;
        bool isWhole = false;
    };

    Outcome attempt(const Break& fault)
    {
        startService();
        Window window{m_line.address()};
        auto plan = LedgerImportCSV::plan(m_file, *window.store->snapshot());
        EXPECT_TRUE(plan.issues.empty());
        EXPECT_EQ(plan.inputs.size(), rows);
        m_line.loseReply(fault.replyLost);
        Outcome outcome;
        const auto progress = [&](std::size_t confirmed) {
            outcome.confirmed = confirmed;
            if (confirmed == fault.serviceKilled)
                m_service->kill();
            if (confirmed == fault.stopped)
                QTimer::singleShot(0, window.store.get(), &LedgerStore::cancel);
            if (confirmed == fault.windowClosed)
                QTimer::singleShot(0, [&] { window.store.reset(); });
        };
        const auto done = resultOf(window.store->importTransactions(std::move(plan.inputs), progress));
        outcome.isWhole = done.has_value();
        if (fault.serviceKilled > 0)
            m_service.reset();
        return outcome;
    }

    /// The books as a window shows them that is opened now.
    SnapshotPointer books()
    {
        startService();
        return Window{m_line.address()}.store->snapshot();
    }

    /// All that is wrong with the database once the service has ended.
    std::string problems()
    {
        m_service->stop();
        m_service.reset();
        return m_founded.problems();
    }

private:
    void startService()
    {
        if (!m_service)
            m_service = std::make_unique<ServiceProcess>(TALLYFOLD_SERVICE_PROGRAM, m_founded.databaseFile(),
                                                         std::vector<std::string>{"--files", m_founded.files()});
        m_line.leadTo(m_service->port());
    }

    static std::string fileOfRows()
    {
        constexpr std::size_t days = 28;
        auto file = LedgerImportCSV::templateText();
        for (std::size_t row = 0; row < rows; ++row)
            file += fmt::format(
                "\"2026-02-{:02}\",\"transfer\",\"bank\",\"IDR\",\"1\",\"\",\"row {}\",\"branch\",\"\",\"\"\r\n",
                row * days / rows + 1, row);
        return file;
    }

    TestService m_founded;
    std::unique_ptr<ServiceProcess> m_service;
    Line m_line;
    std::string m_file = fileOfRows();
};

/// The notes of the entries that the file asked for.
std::multiset<std::string> importedIn(const LedgerSnapshot& books)
{
    std::multiset<std::string> notes;
    for (const auto& entry : books.transactions) {
        if (entry.note.starts_with("row "))
            notes.insert(entry.note);
    }
    return notes;
}

}

TEST(ImportOnTheService, RecordsEachRowOnceHoweverOftenItBreaks)
{
    Import import;
    const auto before = import.books()->account("branch")->balance("IDR");

    const auto breaksAfter = [&](std::size_t confirmed, const Break& fault) {
        const auto outcome = import.attempt(fault);
        EXPECT_FALSE(outcome.isWhole) << confirmed;
        EXPECT_GE(outcome.confirmed, confirmed);
        EXPECT_LT(outcome.confirmed, confirmed + 5);
    };
    breaksAfter(199, {.replyLost = 200});
    EXPECT_EQ(importedIn(*import.books()).size(), 200U) << "also the row whose reply was lost";
    breaksAfter(350, {.stopped = 350});
    breaksAfter(500, {.serviceKilled = 500});
    breaksAfter(650, {.windowClosed = 650});
    breaksAfter(799, {.replyLost = 800});
    EXPECT_TRUE(import.attempt({}).isWhole);
    EXPECT_TRUE(import.attempt({}).isWhole) << "the same file once more";

    const auto books = import.books();
    const auto imported = importedIn(*books);
    EXPECT_EQ(imported.size(), rows);
    EXPECT_EQ(std::set<std::string>(imported.begin(), imported.end()).size(), rows);
    EXPECT_EQ(books->account("branch")->balance("IDR") - before, 100LL * static_cast<std::int64_t>(rows));
    EXPECT_EQ(import.problems(), "");
}
