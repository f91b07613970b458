#include "LedgerUI/Theme/DesktopColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QDir>
#include <QFile>

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";
constexpr auto group = "org.freedesktop.appearance";
constexpr auto key = "color-scheme";

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

// Without a running bus the library would start one, which takes seconds.
bool hasSessionBus()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

// The portal's own numbers: 1 prefers dark, 2 prefers light, 0 states nothing.
std::optional<ColorScheme> schemeOf(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    switch (value.toUInt()) {
    case 1:
        return ColorScheme::dark;
    case 2:
        return ColorScheme::light;
    default:
        return std::nullopt;
    }
}

}

void DesktopColorScheme::watch()
{
    if (!hasSessionBus())
        return;
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    qRegisterMetaType<QDBusVariant>(); // the slot's signature is looked up by names, which know the type only then
    bus.connect(text(service), text(path), text(interface), QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto question = QDBusMessage::createMethodCall(text(service), text(path), text(interface), QStringLiteral("Read"));
    question << text(group) << text(key);
    auto* call = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &DesktopColorScheme::readAnswer);
}

void DesktopColorScheme::readAnswer(QDBusPendingCallWatcher* call)
{
    const QDBusPendingReply<QVariant> reply = *call;
    if (reply.isValid())
        Q_EMIT reported(schemeOf(reply.value()));
    call->deleteLater();
}

void DesktopColorScheme::settingChanged(const QString& changedGroup, const QString& changedKey,
                                        const QDBusVariant& value)
{
    if (changedGroup == text(group) && changedKey == text(key))
        Q_EMIT reported(schemeOf(value.variant()));
}
