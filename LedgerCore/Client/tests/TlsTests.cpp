#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerCore/Domain/Contract.h"

namespace {

/// A server certificate that vouches for itself, made for one test.
class Identity {
public:
    explicit Identity(const QString& subjectName)
    {
        QProcess openssl; // which tells its progress: not to be heard
        openssl.start(QStringLiteral("openssl"),
                      QStringLiteral("req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=ledger -batch -addext "
                                     "subjectAltName=%1 -keyout %2 -out %3")
                          .arg(subjectName, keyFile(), certificateFile())
                          .split(QLatin1Char(' ')));
        openssl.waitForFinished();
        require(!certificate().isNull() && !key().isNull(), "openssl makes a certificate");
    }

    [[nodiscard]] QSslCertificate certificate() const { return QSslCertificate::fromPath(certificateFile()).value(0); }

    [[nodiscard]] QSslKey key() const
    {
        QFile file{keyFile()};
        return file.open(QIODevice::ReadOnly) ? QSslKey{&file, QSsl::Rsa} : QSslKey{};
    }

private:
    [[nodiscard]] QString keyFile() const { return m_folder.filePath(QStringLiteral("key.pem")); }
    [[nodiscard]] QString certificateFile() const { return m_folder.filePath(QStringLiteral("certificate.pem")); }

    QTemporaryDir m_folder;
};

/// Answers whatever it is asked over TLS, and remembers what it could read.
class TlsServer : public QSslServer {
public:
    explicit TlsServer(const Identity& identity)
    {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(identity.certificate());
        configuration.setPrivateKey(identity.key());
        setSslConfiguration(configuration);
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::pendingConnectionAvailable, this, [this] {
            auto* const socket = nextPendingConnection();
            connect(socket, &QIODevice::readyRead, this, [this, socket] {
                m_heard += socket->readAll();
                if (m_heard.endsWith("\r\n\r\n"))
                    socket->write("HTTP/1.1 200 OK\r\nContent-Length: 11\r\n\r\n{\"ok\":true}");
            });
        });
    }

    [[nodiscard]] std::string url() const { return "https://127.0.0.1:" + std::to_string(serverPort()); }
    [[nodiscard]] const QByteArray& heard() const { return m_heard; }

private:
    QByteArray m_heard;
};

/// The machine's trust in one more authority, for the life of this.
class Trust {
public:
    explicit Trust(const QSslCertificate& authority) : m_before(QSslConfiguration::defaultConfiguration())
    {
        auto trusting = m_before;
        trusting.addCaCertificate(authority);
        QSslConfiguration::setDefaultConfiguration(trusting);
    }
    ~Trust() { QSslConfiguration::setDefaultConfiguration(m_before); }
    Trust(const Trust&) = delete;
    Trust& operator=(const Trust&) = delete;

private:
    QSslConfiguration m_before;
};

Result<std::string> answerOf(const TlsServer& server)
{
    return resultOf(APIClient{server.url()}.bytes({.path = "v1/snapshot", .token = "secret"}));
}

const Failure network = APIError{0, "NETWORK", ""};

TEST(Tls, SpeaksToAServiceWhoseCertificateIsTrustedForItsAddress)
{
    const Identity identity{QStringLiteral("IP:127.0.0.1")};
    const TlsServer server{identity};
    const Trust trust{identity.certificate()};
    EXPECT_EQ(answerOf(server), R"({"ok":true})");
    EXPECT_TRUE(server.heard().contains("Authorization: Bearer secret"));
}

TEST(Tls, TellsNothingToAServiceWhoseCertificateIsNotTrusted)
{
    const Identity identity{QStringLiteral("IP:127.0.0.1")};
    const TlsServer server{identity};
    EXPECT_EQ(answerOf(server), std::unexpected(network));
    EXPECT_EQ(server.heard(), "");
}

TEST(Tls, TellsNothingToAServiceWhoseCertificateIsForAnotherAddress)
{
    const Identity identity{QStringLiteral("DNS:ledger.example.com")};
    const TlsServer server{identity};
    const Trust trust{identity.certificate()};
    EXPECT_EQ(answerOf(server), std::unexpected(network));
    EXPECT_EQ(server.heard(), "");
}

}
