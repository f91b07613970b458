#include "Tallyfold/WindowCall.h"

#include <memory>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/WaitFor.h"

namespace {

using Standing = WindowCall::Standing;

struct WindowCalls : testing::Test {
    /// What another start finds, in a thread of its own as another process would.
    Standing anotherStart()
    {
        auto found = Standing::first;
        const std::unique_ptr<QThread> start{QThread::create([&] { found = WindowCall{name}.begin(); })};
        bool isDone = false;
        QObject::connect(start.get(), &QThread::finished, qApp, [&isDone] { isDone = true; });
        start->start();
        waitUntil([&isDone] { return isDone; });
        start->wait();
        return found;
    }

    QTemporaryDir folder;
    QString name = folder.filePath(QStringLiteral("private/window"));
};

/// A socket as a killed program leaves it: its file is there, and nobody listens.
void leaveSocket(const QString& name)
{
    const int left = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_NE(left, -1);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    name.toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(left, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(left);
}

}

TEST_F(WindowCalls, OfLaterStartsRaiseTheOpenWindow)
{
    WindowCall window{name};
    int raised = 0;
    QObject::connect(&window, &WindowCall::called, [&raised] { ++raised; });
    ASSERT_EQ(window.begin(), Standing::first);
    for (int start = 1; start <= 2; ++start) {
        EXPECT_EQ(anotherStart(), Standing::second);
        EXPECT_EQ(raised, start);
    }
}

TEST_F(WindowCalls, BringTheLeaveToComeForwardThatTheDesktopGave)
{
    constexpr auto token = "XDG_ACTIVATION_TOKEN";
    constexpr auto startup = "DESKTOP_STARTUP_ID";
    WindowCall window{name};
    QList<QByteArray> brought;
    QObject::connect(&window, &WindowCall::called, [&](const QByteArray& activation) { brought.append(activation); });
    ASSERT_EQ(window.begin(), Standing::first);
    qunsetenv(token);
    qputenv(startup, "launcher-7_TIME42");
    EXPECT_EQ(anotherStart(), Standing::second);
    qputenv(token, "leave-8");
    EXPECT_EQ(anotherStart(), Standing::second);
    qunsetenv(token);
    qunsetenv(startup);
    EXPECT_EQ(anotherStart(), Standing::second);
    EXPECT_EQ(brought, (QList<QByteArray>{"launcher-7_TIME42", "leave-8", ""}));
}

TEST_F(WindowCalls, AreNotAnsweredOnceTheWindowIsClosed)
{
    WindowCall window{name};
    ASSERT_EQ(window.begin(), Standing::first);
    window.end();
    EXPECT_EQ(anotherStart(), Standing::first);
}

TEST_F(WindowCalls, AreAnsweredAgainAfterAProgramThatWasKilled)
{
    WindowCall window{name};
    leaveSocket(name);
    ASSERT_EQ(window.begin(), Standing::first);
    EXPECT_EQ(anotherStart(), Standing::second);
}

TEST_F(WindowCalls, DoNotWaitForAWindowThatHangs)
{
    QLocalServer hung;
    WindowCall window{name};
    ASSERT_TRUE(hung.listen(name));
    EXPECT_EQ(window.begin(), Standing::first);
    EXPECT_TRUE(QFile::exists(name)) << "what the hung program listens at is left to it";
}

TEST_F(WindowCalls, AreNobodyElsesBusiness)
{
    WindowCall window{name};
    ASSERT_EQ(window.begin(), Standing::first);
    const auto others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(folder.filePath(QStringLiteral("private"))) & others);
    EXPECT_FALSE(QFile::permissions(name) & others);
}
