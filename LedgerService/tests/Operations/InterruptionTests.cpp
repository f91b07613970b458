#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <fmt/core.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/testing/Eventually.h"
#include "LedgerService/testing/OtherWriter.h"
#include "LedgerService/testing/SampleDatabase.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

/// A command of the program that is under way.
class RunningCommand {
public:
    RunningCommand(const std::vector<std::string>& arguments, const std::string& output)
    {
        m_process = fork();
        if (m_process != 0)
            return;
        const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, S_IRUSR | S_IWUSR);
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        std::vector<char*> words{const_cast<char*>(TALLYFOLD_SERVICE_PROGRAM)};
        for (const auto& each : arguments)
            words.push_back(const_cast<char*>(each.c_str()));
        words.push_back(nullptr);
        execv(TALLYFOLD_SERVICE_PROGRAM, words.data());
        _exit(127);
    }
    ~RunningCommand()
    {
        if (m_process > 0)
            end(SIGKILL);
    }
    RunningCommand(const RunningCommand&) = delete;
    RunningCommand& operator=(const RunningCommand&) = delete;

    /// Its exit code, or the number of the signal that has ended it and 128.
    int end(int signal)
    {
        ::kill(m_process, signal);
        return wait();
    }
    void tell(int signal) const { ::kill(m_process, signal); }
    int wait()
    {
        int status = 0;
        waitpid(std::exchange(m_process, -1), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

private:
    pid_t m_process;
};

/// A file with the sample company, and commands of the program on it.
class ToldToEnd : public testing::Test {
protected:
    void SetUp() override { makeSampleDatabase(file); }

    [[nodiscard]] int run(const std::string& arguments) const
    {
        const auto status = std::system(
            fmt::format("{} {} > {} 2>&1", TALLYFOLD_SERVICE_PROGRAM, arguments, folder.file("output.txt")).c_str());
        return WEXITSTATUS(status);
    }

    TemporaryFolder folder;
    std::string file = folder.file("books.sqlite");
};

std::int64_t countIn(const std::string& file, const std::string& rows)
{
    Connection connection{file, Connection::Access::readOnly};
    std::int64_t count = 0;
    Query{connection, "SELECT COUNT(*) FROM " + rows}.into(count).next();
    return count;
}

/// An archive of a company whose import takes many turns, and a database to import it into.
class Importing : public ToldToEnd {
protected:
    void SetUp() override
    {
        ToldToEnd::SetUp();
        {
            Connection connection{file};
            Transaction transaction{connection, Transaction::Mode::writing};
            for (int at = 0; at < 40; ++at) // remembered commands: they refer to nothing
                connection.execute(fmt::format(
                    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000) "
                    "INSERT INTO commands (company_id, idempotency_key, member_id, fingerprint, outcome, created_at) "
                    "SELECT 'sample', 'k{}-' || i, 'mira', 'f', 'x', '2026-03-10T09:30:00.000Z' FROM n",
                    at));
            transaction.commit();
        }
        ASSERT_EQ(run(fmt::format("companies export --database {} --id sample --to {}", file, archive)), 0);
        ASSERT_TRUE(Database::open(target).has_value());
    }

    [[nodiscard]] std::vector<std::string> words() const
    {
        return {"companies", "import", "--database", target, "--from", archive};
    }
    void awaitArrival() const
    {
        ASSERT_TRUE(eventually([&] { return countIn(target, "companies") > 0; }));
    }
    [[nodiscard]] int unfinished() const
    {
        int count = 0;
        for (const auto& each : std::filesystem::directory_iterator{std::filesystem::path{target}.parent_path()})
            count += each.path().filename().string().starts_with(".unfinished-") ? 1 : 0;
        return count;
    }

    std::string archive = folder.file("company.tar");
    std::string target = folder.file("target.sqlite");
};

}

TEST_F(Importing, LeavesNothingWhenItIsToldToEnd)
{
    for (const int signal : {SIGTERM, SIGINT}) {
        RunningCommand command{words(), folder.file("output.txt")};
        ASSERT_NO_FATAL_FAILURE(awaitArrival());
        {
            const OtherWriter other{target}; // the import waits for its turn, or is in one
            command.tell(signal);
        }
        EXPECT_EQ(command.wait(), 128 + signal);
        for (const auto* rows : {"companies", "users", "commands", "audit_records"})
            EXPECT_EQ(countIn(target, rows), 0) << rows;
        EXPECT_EQ(unfinished(), 0);
    }
    EXPECT_EQ(run(fmt::format("companies import --database {} --from {}", target, archive)), 0);
    EXPECT_EQ(countIn(target, "commands"), 40'000);
}

TEST_F(Importing, MakesWayForTheNextWhenItWasKilled)
{
    {
        RunningCommand command{words(), folder.file("output.txt")};
        ASSERT_NO_FATAL_FAILURE(awaitArrival());
        const OtherWriter other{target};
        EXPECT_EQ(command.end(SIGKILL), 128 + SIGKILL);
    }
    EXPECT_EQ(run(fmt::format("verify --database {}", target)), 0) << "nobody's rows are no problem";
    Connection{target}.execute(
        "UPDATE companies SET approval_status = 'arriving somebody 2026-01-01T00:00:00.000Z'"); // long ago
    EXPECT_EQ(run(fmt::format("companies import --database {} --from {}", target, archive)), 0);
    EXPECT_EQ(countIn(target, "commands"), 40'000);
}

TEST_F(ToldToEnd, LeavesNothingOfABackupOrARestoreThatIsToldToEnd)
{
    const auto place = folder.file("place");
    std::filesystem::create_directory(place);
    const auto left = [&] {
        return std::distance(std::filesystem::directory_iterator{place}, std::filesystem::directory_iterator{});
    };
    const auto archive = folder.file("books.tar");
    {
        Connection connection{file};
        connection.execute("CREATE TABLE large (content TEXT)"); // takes a while to be copied
        connection.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 40000) "
                           "INSERT INTO large SELECT hex(zeroblob(1000)) FROM n");
    }
    const auto endsEarly = [&](const std::vector<std::string>& arguments) {
        RunningCommand command{arguments, folder.file("output.txt")};
        EXPECT_TRUE(eventually([&] { return left() > 0; }));
        return command.end(SIGTERM);
    };
    EXPECT_EQ(endsEarly({"backup", "--database", file, "--to", place + "/books.tar"}), 128 + SIGTERM);
    EXPECT_EQ(left(), 0);
    Connection{file}.execute("DROP TABLE large");
    ASSERT_EQ(run(fmt::format("backup --database {} --to {}", file, archive)), 0);
    const auto ended = endsEarly({"restore", "--database", place + "/books.sqlite", "--from", archive});
    EXPECT_EQ(left(), ended == 0 ? 1 : 0) << "all of it or nothing: " << ended;
}

}
