#include "Tests/EndToEnd/Stage/LossyLine.h"

#include <memory>

#include <QTcpSocket>
#include <QUrl>

#include "Tests/EndToEnd/Story.h"

LossyLine::LossyLine(const QString& service) : m_service{static_cast<quint16>(QUrl{service}.port())}
{
    expect(m_server.listen(QHostAddress::LocalHost), QStringLiteral("the line is open"));
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { carry(); });
}

QString LossyLine::address() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort());
}

void LossyLine::loseReplyTo(const QByteArray& path)
{
    m_armed = "POST /" + path;
}

void LossyLine::loseRequestTo(const QByteArray& path)
{
    m_swallowed = "POST /" + path;
}

void LossyLine::carry()
{
    auto* const program = m_server.nextPendingConnection();
    auto* const service = new QTcpSocket{program};
    const auto loses = std::make_shared<bool>(false);
    service->connectToHost(QHostAddress{QHostAddress::LocalHost}, m_service);
    QObject::connect(program, &QTcpSocket::readyRead, service, [this, program, service, loses] {
        const auto asked = program->readAll();
        if (!m_swallowed.isEmpty() && asked.startsWith(m_swallowed)) {
            m_swallowed.clear();
            QObject::disconnect(program, &QTcpSocket::readyRead, service, nullptr);
            return;
        }
        if (!m_armed.isEmpty() && asked.startsWith(m_armed))
            *loses = true;
        service->write(asked);
    });
    QObject::connect(service, &QTcpSocket::readyRead, program, [this, program, service, loses] {
        const auto answered = service->readAll();
        if (!*loses) {
            program->write(answered);
            return;
        }
        m_armed.clear();
        program->abort();
    });
    QObject::connect(service, &QTcpSocket::disconnected, program, &QTcpSocket::disconnectFromHost);
    QObject::connect(service, &QTcpSocket::errorOccurred, program, [program] { program->abort(); });
    QObject::connect(program, &QTcpSocket::disconnected, program, &QObject::deleteLater);
}

void hearOfTheLoss(Stage& stage, const LossyLine& line)
{
    auto& screen = stage.screen;
    screen.waitFor("alertDialog");
    expect(line.hasLost(), QStringLiteral("the service had answered"));
    screen.press("messageClose");
    screen.waitUntilGone("alertDialog");
}

void loseOn(Stage& stage, LossyLine& line, const char* path, const char* field, const QString& what, const char* sends)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("The reply is lost: ") + what, [&] {
        line.loseReplyTo(path);
        screen.keys(sends);
        screen.waitForText("Retry original request");
        expect(line.hasLost(), QStringLiteral("the service had answered"));
        expect(!screen.offers(field), QStringLiteral("the form is locked"));
    });
}
