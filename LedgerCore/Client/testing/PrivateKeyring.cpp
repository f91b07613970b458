#include "LedgerCore/Client/testing/PrivateKeyring.h"

#include <csignal>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QMap>
#include <sys/prctl.h>

#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerCore/Domain/Contract.h"

namespace {

/// A secret as the Secret Service takes it.
struct Secret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Secret& secret)
{
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Secret& secret)
{
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): as Qt asks for it
}

constexpr auto password = "a password";

constexpr auto busRules = R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

QString secrets()
{
    return QStringLiteral("org.freedesktop.secrets");
}

/// Ends with this program, however that ends.
void endWithParent(QProcess& process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

/// What the Secret Service returns; empty when it fails.
QVariantList ask(const QString& path, const QString& interface, const QString& method, const QVariantList& arguments)
{
    auto question = QDBusMessage::createMethodCall(secrets(), path, interface, method);
    question.setArguments(arguments);
    const auto answer = QDBusConnection::sessionBus().call(question);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList{};
}

QVariantList askService(const QString& method, const QVariantList& arguments)
{
    return ask(QStringLiteral("/org/freedesktop/secrets"), QStringLiteral("org.freedesktop.Secret.Service"), method,
               arguments);
}

/// The collection that new items go to; empty while there is none.
QString defaultCollection()
{
    const auto alias = askService(QStringLiteral("ReadAlias"), {QStringLiteral("default")});
    const auto path = alias.isEmpty() ? QString{} : alias.front().value<QDBusObjectPath>().path();
    return path == QStringLiteral("/") ? QString{} : path;
}

bool isOpen()
{
    const auto collection = defaultCollection();
    if (collection.isEmpty())
        return false;
    const auto locked = ask(collection, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                            {QStringLiteral("org.freedesktop.Secret.Collection"), QStringLiteral("Locked")});
    return !locked.isEmpty() && !locked.front().value<QDBusVariant>().variant().toBool();
}

/// Opens the keyring of a daemon that runs, as signing in to a desktop does.
void openWithPassword()
{
    qDBusRegisterMetaType<Secret>();
    const auto session = askService(QStringLiteral("OpenSession"),
                                    {QStringLiteral("plain"), QVariant::fromValue(QDBusVariant{QString{}})});
    require(session.size() == 2, "the keyring opens a session");
    ask(QStringLiteral("/org/freedesktop/secrets"),
        QStringLiteral("org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"),
        QStringLiteral("UnlockWithMasterPassword"),
        {QVariant::fromValue(QDBusObjectPath{defaultCollection()}),
         QVariant::fromValue(
             Secret{session.back().value<QDBusObjectPath>(), {}, password, QStringLiteral("text/plain")})});
}

}

PrivateKeyring& PrivateKeyring::shared()
{
    static auto* const keyring = new PrivateKeyring; // needed until the very end
    return *keyring;
}

PrivateKeyring::PrivateKeyring()
{
    for (const auto* folder : {"home", "data", "run", "bus"})
        QDir{m_folder.path()}.mkpath(QString::fromLatin1(folder));
    QFile::setPermissions(m_folder.filePath(QStringLiteral("run")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("HOME", m_folder.filePath(QStringLiteral("home")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", m_folder.filePath(QStringLiteral("data")).toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", m_folder.filePath(QStringLiteral("run")).toLocal8Bit());
    for (const auto* desktop : {"XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "KDE_FULL_SESSION"})
        qunsetenv(desktop);
    startBus();
}

void PrivateKeyring::startBus()
{
    const auto rules = m_folder.filePath(QStringLiteral("bus.conf"));
    QFile file{rules};
    require(file.open(QIODevice::WriteOnly), "the folder of the test can be written to");
    file.write(QString::fromLatin1(busRules).arg(m_folder.filePath(QStringLiteral("bus"))).toUtf8());
    file.close();
    endWithParent(m_bus);
    m_bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--config-file=") + rules, QStringLiteral("--nofork"),
                                                QStringLiteral("--print-address")});
    require(m_bus.waitForReadyRead(), "the bus tells its address");
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
    auto bus = QDBusConnection::sessionBus();
    require(bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath) &&
                bus.registerService(QStringLiteral("org.gnome.keyring.SystemPrompter")),
            "the test stands in for the program that asks for passwords");
}

void PrivateKeyring::unlock()
{
    if (m_daemon.state() == QProcess::Running) {
        ::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT);
        if (!isOpen())
            openWithPassword();
        require(isOpen(), "the keyring opens with its password");
        return;
    }
    endWithParent(m_daemon);
    m_daemon.start(QStringLiteral("gnome-keyring-daemon"), {QStringLiteral("--foreground"), QStringLiteral("--unlock"),
                                                            QStringLiteral("--components=secrets")});
    m_daemon.write(password);
    m_daemon.closeWriteChannel();
    waitUntil(isOpen);
}

void PrivateKeyring::lock()
{
    askService(QStringLiteral("Lock"),
               {QVariant::fromValue(QList<QDBusObjectPath>{QDBusObjectPath{defaultCollection()}})});
    require(!isOpen(), "the keyring is locked");
}

void PrivateKeyring::remove()
{
    m_daemon.kill();
    m_daemon.waitForFinished();
}

void PrivateKeyring::silence()
{
    ::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP);
}

int PrivateKeyring::itemCount(const QString& account) const
{
    using Attributes = QMap<QString, QString>;
    qDBusRegisterMetaType<Attributes>();
    const auto found =
        askService(QStringLiteral("SearchItems"), {QVariant::fromValue(Attributes{{QStringLiteral("user"), account}})});
    return static_cast<int>(qdbus_cast<QList<QDBusObjectPath>>(found.front()).size());
}

QString PrivateKeyring::introspect(const QString& /*path*/) const
{
    return {};
}

bool PrivateKeyring::handleMessage(const QDBusMessage& /*message*/, const QDBusConnection& /*connection*/)
{
    ++m_prompts;
    return false;
}
