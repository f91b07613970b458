#include "Tests/EndToEnd/Stage/StoryTeller.h"

#include <chrono>
#include <cstdio>

#include <QEventLoop>
#include <QPainter>
#include <QPixmap>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/testing/ScreenDriver.h"

namespace {

constexpr int settleMilliseconds = 200; // for the pictures only: texts behind a short delay have come by then

void say(const QString& line)
{
    std::fprintf(stdout, "%s\n", qPrintable(line));
    std::fflush(stdout);
}

}

StoryTeller::StoryTeller(QDir screens) : m_screens(std::move(screens))
{
    m_screens.mkpath(QStringLiteral("."));
    for (const auto& old : m_screens.entryList({QStringLiteral("*.png")}))
        m_screens.remove(old);
}

void StoryTeller::readBy(const QString& reader)
{
    m_reader.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_reader.start(reader, QStringList{});
    expect(m_reader.waitForStarted(), QStringLiteral("the reader %1 starts").arg(reader));
}

void StoryTeller::begin(const QString& story)
{
    say(story);
}

void StoryTeller::step(const QString& title, const std::function<void()>& act)
{
    say(QStringLiteral("%1. %2").arg(m_steps + 1, 4).arg(title));
    act();
    picture(title);
}

void StoryTeller::picture(const QString& title)
{
    keep(title);
    if (!m_reader.program().isEmpty())
        listen(title);
}

void StoryTeller::pictureOfFailure()
{
    if (!visibleWindows().isEmpty()) // a story's own windows are gone by then
        keep(QStringLiteral("failure"));
}

void StoryTeller::keep(const QString& title)
{
    ++m_steps;
    QTest::qWait(settleMilliseconds);
    const auto windows = visibleWindows();
    expect(!windows.isEmpty(), QStringLiteral("a window is open"));
    auto picture = windows.front()->grab();
    QPainter painter{&picture};
    for (auto* above : windows.mid(1)) {
        const auto place = above->geometry().translated(-windows.front()->geometry().topLeft());
        painter.drawPixmap(place.topLeft(), above->grab());
        painter.setPen(Theme::current().color(Token::control)); // where the window system draws its frame
        painter.drawRect(place);
    }
    painter.end();
    static const QRegularExpression notForNames{QStringLiteral("[^a-z0-9]+")};
    const auto name = QStringLiteral("%1-%2.png")
                          .arg(m_steps, 2, 10, QLatin1Char('0'))
                          .arg(title.toLower().replace(notForNames, QStringLiteral("-")));
    expect(picture.save(m_screens.filePath(name)), QStringLiteral("the picture %1 can be written").arg(name));
}

/// The reader writes a line for each thing that is wrong, and a dot when it has gone through all windows.
void StoryTeller::listen(const QString& title)
{
    constexpr std::chrono::minutes patience{3};
    QByteArray heard;
    QEventLoop talk; // each thing is a call over the bus, which is answered at once
    QObject::connect(&m_reader, &QProcess::readyReadStandardOutput, &talk, [&] {
        heard += m_reader.readAllStandardOutput();
        if (heard.endsWith(".\n"))
            talk.quit();
    });
    QObject::connect(&m_reader, &QProcess::finished, &talk, &QEventLoop::quit);
    QTimer::singleShot(patience, &talk, &QEventLoop::quit);
    m_reader.write("look\n");
    talk.exec();
    expect(heard.endsWith(".\n"), QStringLiteral("the reader has gone through all windows"));
    heard.chop(2);
    expect(heard.isEmpty(),
           QStringLiteral("“%1” can be read without seeing it:\n%2").arg(title, QString::fromUtf8(heard)));
}

void expect(bool holds, const QString& promise)
{
    if (!holds)
        throw ScreenFailure("broken promise: " + promise.toStdString());
}
