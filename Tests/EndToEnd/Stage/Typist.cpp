#include "Tests/EndToEnd/Stage/Typist.h"

#include <cstdio>
#include <memory>

#include <QCoreApplication>
#include <QTest>

#include "LedgerCore/Client/Session/SessionMemory.h"
#include "LedgerUI/testing/ScreenDriver.h"
#include "Tallyfold/MainWindow.h"
#include "Tallyfold/TallyfoldApp.h"
#include "Tests/EndToEnd/Stage/StoryTeller.h"

namespace {

constexpr int killMilliseconds = 10'000;

}

Typist::Typist(const QString& service, const Order& order)
{
    QStringList arguments{QStringLiteral("--service"),    QStringLiteral("none"),
                          QStringLiteral("--screens"),    QStringLiteral("none"),
                          QStringLiteral("--typist"),     service,
                          QStringLiteral("--typed-note"), QString::fromStdString(order.note)};
    if (order.isSent)
        arguments << QStringLiteral("--typed-and-sent");
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QCoreApplication::applicationFilePath(), arguments);
    expect(m_process.waitForStarted(), QStringLiteral("the other program starts"));
}

Typist::~Typist()
{
    kill();
}

void Typist::kill()
{
    m_process.kill();
    m_process.waitForFinished(killMilliseconds);
}

int Typist::work(const std::string& service, const Order& order)
{
    constexpr std::chrono::seconds patience{60};
    const ScreenDriver waiting{patience};
    ScreenDriver screen{patience};
    TallyfoldApp program{{.language = "en-US", .credentials = std::make_unique<SessionMemory>(), .service = service}};
    try {
        program.start();
        program.window().resize(1160, 760);
        program.window().activateWindow();
        expect(QTest::qWaitForWindowActive(&program.window()), QStringLiteral("the window is active"));
        screen.choose("demonstration", "profile-finance");
        screen.waitFor("ledgerTable");
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        screen.fill("entryAmount", "61000");
        screen.fill("entryNote", order.note);
        screen.press("entryCategory0");
        if (order.isSent)
            screen.keys("Ctrl+Return");
        waiting.waitUntil("somebody kills the program", [] { return false; });
    } catch (const ScreenFailure& failure) {
        std::fprintf(stderr, "the program that was to be killed: %s\n", failure.what());
    }
    return 1;
}
