#include "LedgerCore/Client/Files/FileSaving.h"

#include <csignal>
#include <fstream>
#include <sstream>
#include <string>

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string contentOf(const std::filesystem::path& path)
{
    std::ostringstream text;
    text << std::ifstream{path, std::ios::binary}.rdbuf();
    return text.str();
}

/// No file of this process grows past `bytes`, as on a disk that is full.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small{.rlim_cur = bytes, .rlim_max = m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

constexpr int noDisk = 100;

/// Puts a disk of two blocks into the place of the folder, which this process alone sees.
bool mountTinyDisk(const std::filesystem::path& folder)
{
    const auto user = getuid();
    const auto group = getgid();
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    std::ofstream{"/proc/self/uid_map"} << user << ' ' << user << " 1";
    std::ofstream{"/proc/self/setgroups"} << "deny";
    std::ofstream{"/proc/self/gid_map"} << group << ' ' << group << " 1";
    return mount("none", folder.c_str(), "tmpfs", 0, "size=8k") == 0 && std::ofstream{folder / "probe"}.is_open();
}

/// How many files of other sizes than fit are written, said to be, or taken for another problem.
int misjudgedOnTinyDisk(const std::filesystem::path& file)
{
    if (!mountTinyDisk(file.parent_path()))
        return noDisk;
    int misjudged = FileSaving::write(file, "the file of last month") ? 1 : 0;
    for (const std::size_t size : {5'000UL, 10'000UL, 1'000'000UL}) {
        const bool isTold = FileSaving::write(file, std::string(size, 'x')) == SavingProblem::diskFull;
        misjudged += isTold && contentOf(file) == "the file of last month" ? 0 : 1;
    }
    return misjudged;
}

struct FileSavingTests : testing::Test {
    QTemporaryDir folder;
    std::filesystem::path file = std::filesystem::path{folder.path().toStdString()} / "Sổ cái 2026.csv";
};

}

TEST_F(FileSavingTests, ReplacesWhatStandsThereByExactlyTheContent)
{
    const std::string content{"\xEF\xBB\xBF\"a\"\r\n\0b", 10};
    EXPECT_EQ(FileSaving::write(file, "something longer than what comes after it"), std::nullopt);
    EXPECT_EQ(FileSaving::write(file, content), std::nullopt);
    EXPECT_EQ(contentOf(file), content);
    EXPECT_EQ(FileSaving::write(file, ""), std::nullopt);
    EXPECT_EQ(contentOf(file), "");
}

TEST_F(FileSavingTests, LeavesWhatStandsThereWhereItCannotWriteAll)
{
    ASSERT_EQ(FileSaving::write(file, "the file of last month"), std::nullopt);
    for (const std::size_t kilobytes : {10UL, 1024UL}) { // more and less than is gathered before it is written
        const SmallDisk disk{rlim_t{4} * 1024};
        EXPECT_TRUE(FileSaving::write(file, std::string(kilobytes * std::size_t{1024}, 'x')).has_value()) << kilobytes;
        EXPECT_EQ(contentOf(file), "the file of last month") << kilobytes;
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{file.parent_path()}, {}), 1) << "nothing is left over";
}

TEST_F(FileSavingTests, SaysThatTheDiskIsFullHoweverMuchOfTheFileFits)
{
    const auto child = fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        _exit(misjudgedOnTinyDisk(file));
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == noDisk)
        GTEST_SKIP() << "no disk can be mounted here";
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(FileSavingTests, SaysWhyItCannotBegin)
{
    EXPECT_EQ(FileSaving::write(file.parent_path() / "gone" / "a.csv", "x"), SavingProblem::folderMissing);
    std::filesystem::create_directory(file);
    EXPECT_EQ(FileSaving::write(file, "x"), SavingProblem::notAllowed);
    EXPECT_TRUE(std::filesystem::is_directory(file));
}
