#include "LedgerService/testing/TestService.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <thread>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Commands/CompanyFounding.h"
#include "LedgerService/Http/Routes/AllRoutes.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Identity/Token.h"
#include "LedgerService/Operations/Databases/Verify.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"
#include "LedgerService/testing/SampleBooks.h"

namespace LedgerService {

namespace {

/// The day on which the sample's members act.
const auto sampleInstant = *LedgerDay::parseStamp("2026-03-10T09:30:00.000Z");

}

void foundSample(Connection& connection, const std::string& companyID)
{
    static const auto passwordHash = Password::hash(TestService::password);
    CompanyFounding founding;
    founding.company.id = companyID;
    founding.company.name = "Sample " + companyID;
    founding.company.createdAt = "2026-01-01T08:00:00.000Z";
    founding.company.approvalStatus = "approved";
    founding.books = SampleBooks::books();
    for (auto& member : founding.books.members) {
        member.email = fmt::format("{}@{}.example", member.id, companyID);
        member.userID = fmt::format("{}-of-{}", member.id, companyID);
    }
    founding.passwordHash = passwordHash;
    founding.write(connection);
}

TestService::TestService(const std::function<void(ServerOptions&)>& adjust)
    : m_offset(std::make_shared<std::chrono::seconds>(0))
{
    ServerOptions options;
    options.databaseFile = databaseFile();
    options.files = files();
    options.routes = allRoutes();
    options.clock = clock();
    options.mail.spoolFolder = m_folder.file("mail");
    adjust(options);
    write([](Connection& connection) { foundSample(connection, "sample"); });
    auto server = Server::start(std::move(options));
    require(server.has_value(), server ? "" : server.error());
    m_server = *std::move(server);
}

TestService::~TestService() = default;

Clock TestService::clock() const
{
    return [offset = m_offset] { return sampleInstant + *offset; };
}

std::string TestService::tokenOf(const std::string& memberID, const std::string& companyID)
{
    auto token = Token::issue();
    write([&](Connection& connection) {
        SessionRepository::insert(connection, Token::hash(token), {companyID, memberID},
                                  LedgerDay::stamp(sampleInstant),
                                  LedgerDay::stamp(sampleInstant + std::chrono::hours{24}));
    });
    return token;
}

HttpAnswer TestService::as(const std::string& memberID, std::string_view method, const std::string& path,
                           const std::string& body)
{
    return client().send(method, path, tokenOf(memberID), body);
}

LedgerSnapshot TestService::snapshotOf(const std::string& memberID)
{
    auto snapshot = Json::decode<LedgerSnapshot>(as(memberID, "GET", "/v1/snapshot").body);
    require(snapshot.has_value(), "the service sends a snapshot");
    return *std::move(snapshot);
}

void TestService::write(const std::function<void(Connection&)>& work)
{
    const auto database = Database::open(databaseFile());
    require(database.has_value(), database ? "" : database.error());
    const auto loan = (*database)->borrow();
    Transaction transaction{*loan, Transaction::Mode::writing};
    work(*loan);
    transaction.commit();
}

void TestService::waitForUnfinished(std::size_t bytes) const
{
    constexpr std::chrono::seconds patience{20};
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const auto load = m_server->load();
        if (load && load->bodyBytes >= bytes)
            return;
        require(std::chrono::steady_clock::now() < end, "the service takes in what was sent");
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
}

std::vector<std::string> TestService::mails(std::size_t count) const
{
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds{10};
    std::set<std::filesystem::path> files;
    while (files.size() < count && std::chrono::steady_clock::now() < until) {
        std::this_thread::yield();
        for (const auto& each : std::filesystem::directory_iterator{m_folder.file("mail")}) {
            if (each.path().extension() == ".eml")
                files.insert(each.path());
        }
    }
    std::vector<std::string> mails;
    for (const auto& each : files) {
        std::ifstream file{each};
        mails.emplace_back(std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{});
    }
    return mails;
}

std::string TestService::problems() const
{
    Connection connection{databaseFile()};
    std::string lines;
    for (const auto& problem : Verify::run(connection, files()).problems)
        lines += problem + "\n";
    return lines;
}

}
