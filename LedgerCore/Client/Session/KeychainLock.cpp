#include "LedgerCore/Client/Session/KeychainLock.h"

#include <QtGlobal>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

#include <optional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QMap>

namespace {

using Attributes = QMap<QString, QString>;

/// What a call on the session bus returns; empty when there is no bus, no such service or no answer.
std::optional<QVariantList> ask(const QString& service, const QString& path, const QString& interface,
                                const QString& method, const QVariantList& arguments, const QDeadlineTimer& until)
{
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || until.hasExpired())
        return std::nullopt;
    auto question = QDBusMessage::createMethodCall(service, path, interface, method);
    question.setArguments(arguments);
    const auto answer = bus.call(question, QDBus::Block, static_cast<int>(until.remainingTime()));
    return answer.type() == QDBusMessage::ReplyMessage ? std::optional{answer.arguments()} : std::nullopt;
}

// The Secret Service interface of freedesktop.org.

std::optional<QVariantList> askSecrets(const QString& interface, const QString& path, const QString& method,
                                       const QVariantList& arguments, const QDeadlineTimer& until)
{
    return ask(QStringLiteral("org.freedesktop.secrets"), path, interface, method, arguments, until);
}

QString secretsPath()
{
    return QStringLiteral("/org/freedesktop/secrets");
}

QString secretsInterface()
{
    return QStringLiteral("org.freedesktop.Secret.Service");
}

/// The collection that new items go to is there and open.
bool isDefaultCollectionOpen(const QDeadlineTimer& until)
{
    const auto alias =
        askSecrets(secretsInterface(), secretsPath(), QStringLiteral("ReadAlias"), {QStringLiteral("default")}, until);
    if (!alias || alias->isEmpty())
        return false;
    const auto path = alias->front().value<QDBusObjectPath>().path();
    if (path == QStringLiteral("/"))
        return false;
    const auto locked =
        askSecrets(QStringLiteral("org.freedesktop.DBus.Properties"), path, QStringLiteral("Get"),
                   {QStringLiteral("org.freedesktop.Secret.Collection"), QStringLiteral("Locked")}, until);
    return locked && !locked->isEmpty() && !locked->front().value<QDBusVariant>().variant().toBool();
}

/// No item of the account lies in a collection that is locked.
bool isItemOpen(const QString& account, const QDeadlineTimer& until)
{
    qDBusRegisterMetaType<Attributes>();
    const Attributes attributes{{QStringLiteral("user"), account},
                                {QStringLiteral("server"), QString::fromLatin1(KeychainLock::service)}};
    const auto found = askSecrets(secretsInterface(), secretsPath(), QStringLiteral("SearchItems"),
                                  {QVariant::fromValue(attributes)}, until);
    return found && found->size() == 2 && qdbus_cast<QList<QDBusObjectPath>>(found->back()).isEmpty();
}

// KWallet, which the keychain library takes on Plasma desktops.

bool isPlasma()
{
    return qgetenv("XDG_CURRENT_DESKTOP") == "KDE" || qgetenv("DESKTOP_SESSION") == "kde" ||
           !qEnvironmentVariableIsEmpty("KDE_FULL_SESSION");
}

std::optional<QVariantList> askWallets(const QString& method, const QVariantList& arguments,
                                       const QDeadlineTimer& until)
{
    return ask(QStringLiteral("org.kde.kwalletd5"), QStringLiteral("/modules/kwalletd5"),
               QStringLiteral("org.kde.KWallet"), method, arguments, until);
}

bool isWalletOpen(const QDeadlineTimer& until)
{
    const auto name = askWallets(QStringLiteral("networkWallet"), {}, until);
    if (!name || name->isEmpty())
        return false;
    const auto open = askWallets(QStringLiteral("isOpen"), {name->front().toString()}, until);
    return open && !open->isEmpty() && open->front().toBool();
}

}

bool KeychainLock::wouldPrompt(const QString& account, const QDeadlineTimer& until)
{
    if (isPlasma())
        return !isWalletOpen(until);
    return !isDefaultCollectionOpen(until) || !isItemOpen(account, until);
}

#else

/// Elsewhere the system opens the keychain with the person's session.
bool KeychainLock::wouldPrompt(const QString&, const QDeadlineTimer&)
{
    return false;
}

#endif
