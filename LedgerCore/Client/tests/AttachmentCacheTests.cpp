#include "LedgerCore/Client/Receipts/AttachmentCache.h"

#include <csignal>
#include <fstream>

#include <QByteArray>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// A folder for temporary files that no other program uses.
struct TemporaryFiles {
    QTemporaryDir folder;
    QByteArray before = qgetenv("TMPDIR");

    TemporaryFiles() { qputenv("TMPDIR", folder.path().toUtf8()); }
    ~TemporaryFiles()
    {
        if (before.isEmpty())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", before);
    }

    [[nodiscard]] std::ptrdiff_t count() const
    {
        return std::distance(fs::directory_iterator{folder.path().toStdString()}, fs::directory_iterator{});
    }
};

fs::path kept(const AttachmentCache& cache)
{
    const auto place = cache.place("r1", "bill.pdf").value_or(fs::path{});
    std::ofstream{place} << "%PDF-";
    return place;
}

/// What a program does that is killed while it shows a receipt.
[[noreturn]] void showAndDie()
{
    const AttachmentCache cache;
    kept(cache);
    ::raise(SIGKILL);
    ::_exit(0);
}

}

TEST(AttachmentCache, KeepsEachReceiptWhereOnlyThisUserCanLook)
{
    const AttachmentCache cache;
    const auto place = cache.place("r1/../x", "bill.pdf");
    ASSERT_TRUE(place);
    for (const auto& folder : {place->parent_path(), place->parent_path().parent_path()})
        EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << folder;
}

TEST(AttachmentCache, RemovesWhatAKilledProgramLeftAndNothingElse)
{
    const TemporaryFiles files;
    const auto killed = ::fork();
    ASSERT_GE(killed, 0);
    if (killed == 0)
        showAndDie();
    ASSERT_EQ(::waitpid(killed, nullptr, 0), killed);
    ASSERT_EQ(files.count(), 1) << "the killed program's";

    const AttachmentCache running;
    const auto receipt = kept(running);
    const auto root = fs::path{files.folder.path().toStdString()};
    fs::create_directory(root / "of-another-program");
    fs::create_directory_symlink(root / "of-another-program", root / "tallyfold-receipts-linked");
    AttachmentCache::removeAbandoned();
    EXPECT_TRUE(fs::exists(receipt)) << "of a program that runs";
    EXPECT_TRUE(fs::exists(root / "of-another-program"));
    EXPECT_EQ(files.count(), 3) << "these two and the link";
}
