#include "Tallyfold/WindowCall.h"

#include <utility>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>

namespace {

constexpr int patience = 2000; // milliseconds
constexpr auto greeting = "raise";
constexpr auto reply = "raised\n";

/// The desktop's leave to come forward, which it gives to what a person starts.
QByteArray ownActivation()
{
    const auto token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

}

WindowCall::WindowCall(QString name) : m_name{std::move(name)}
{
    const auto folder = QFileInfo{m_name}.path();
    QDir{}.mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &WindowCall::answer);
}

WindowCall::Standing WindowCall::begin()
{
    // Of two starts at the same moment one waits here until the other can be called.
    QLockFile turn{m_name + QStringLiteral(".lock")};
    turn.tryLock(2 * patience);
    const auto answer = call();
    if (answer == Answer::raised)
        return Standing::second;
    if (answer == Answer::none) {
        QLocalServer::removeServer(m_name); // what a program that was killed has left behind
        m_server.listen(m_name);
    }
    return Standing::first;
}

void WindowCall::end()
{
    m_server.close();
}

WindowCall::Answer WindowCall::call() const
{
    QLocalSocket line;
    line.connectToServer(m_name);
    if (!line.waitForConnected(patience))
        return Answer::none;
    line.write((QByteArray{greeting} + ' ' + ownActivation()).trimmed() + '\n');
    return line.waitForReadyRead(patience) && line.readAll() == reply ? Answer::raised : Answer::silent;
}

QString WindowCall::usualName()
{
    auto display = qEnvironmentVariable("WAYLAND_DISPLAY", qEnvironmentVariable("DISPLAY"));
    display.replace(QLatin1Char{'/'}, QLatin1Char{'_'});
    const QDir folder{QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)};
    return folder.filePath(QStringLiteral("tallyfold/window") + display);
}

void WindowCall::answer()
{
    while (auto* caller = m_server.nextPendingConnection()) {
        connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        const auto hear = [this, caller] {
            if (!caller->canReadLine())
                return;
            const auto said = caller->readLine().trimmed();
            if (said != greeting && !said.startsWith(QByteArray{greeting} + ' '))
                return;
            Q_EMIT called(said.mid(QByteArray{greeting}.size() + 1));
            caller->write(reply);
            caller->flush();
        };
        connect(caller, &QLocalSocket::readyRead, this, hear);
        hear();
    }
}
