#include "LedgerCore/Client/Files/FileSaving.h"

#include <csignal>
#include <fstream>
#include <sstream>
#include <string>

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/resource.h>

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
    {
        const SmallDisk disk{64 * 1024};
        EXPECT_TRUE(FileSaving::write(file, std::string(1024 * 1024, 'x')).has_value());
    }
    EXPECT_EQ(contentOf(file), "the file of last month");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{file.parent_path()}, {}), 1) << "nothing is left over";
}

TEST_F(FileSavingTests, SaysWhyItCannotBegin)
{
    EXPECT_EQ(FileSaving::write(file.parent_path() / "gone" / "a.csv", "x"), SavingProblem::folderMissing);
    std::filesystem::create_directory(file);
    EXPECT_EQ(FileSaving::write(file, "x"), SavingProblem::notAllowed);
    EXPECT_TRUE(std::filesystem::is_directory(file));
}
