#include "LedgerUI/Theme/DesktopColorScheme.h"

#include <optional>
#include <vector>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QProcess>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr uint prefersDark = 1;
constexpr uint prefersLight = 2;

/// A session bus of the test's own, which the program finds in its environment.
class SessionBus {
public:
    SessionBus()
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        if (m_daemon.waitForReadyRead())
            m_address = QString::fromLatin1(m_daemon.readLine()).trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toLatin1());
    }

    ~SessionBus()
    {
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    [[nodiscard]] QDBusConnection connect(const QString& name) const
    {
        return QDBusConnection::connectToBus(m_address, name);
    }

private:
    QProcess m_daemon;
    QString m_address;
};

/// The desktop portal as desktops offer it: answers within two wrappings, and announces what changes.
class Portal : public QDBusVirtualObject {
public:
    Portal(const QDBusConnection& bus, uint scheme) : m_bus(bus), m_scheme(scheme) {}

    [[nodiscard]] bool open()
    {
        return m_bus.registerVirtualObject(path(), this) &&
               m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }

    void announce(const char* setting, uint value)
    {
        auto signal = QDBusMessage::createSignal(path(), interface(), QStringLiteral("SettingChanged"));
        signal << group() << QString::fromLatin1(setting) << QVariant::fromValue(QDBusVariant{value});
        m_bus.send(signal);
    }

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        const QList<QVariant> asked{group(), QStringLiteral("color-scheme")};
        if (message.interface() != interface() || message.member() != QStringLiteral("Read") ||
            message.arguments() != asked)
            return false;
        const QDBusVariant inner{m_scheme};
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant{QVariant::fromValue(inner)})));
    }

private:
    static QString path() { return QStringLiteral("/org/freedesktop/portal/desktop"); }
    static QString interface() { return QStringLiteral("org.freedesktop.portal.Settings"); }
    static QString group() { return QStringLiteral("org.freedesktop.appearance"); }

    QDBusConnection m_bus;
    uint m_scheme;
};

TEST(DesktopColorScheme, DressesTheProgramAsTheDesktopPortalWishesAndFollowsIt)
{
    const SessionBus session;
    Portal portal{session.connect(QStringLiteral("portal")), prefersDark};
    ASSERT_TRUE(portal.open());
    auto& theme = Theme::current();
    theme.followDesktop();
    EXPECT_EQ(theme.scheme(), ColorScheme::light);
    waitUntil([&] { return theme.scheme() == ColorScheme::dark; });

    std::vector<std::optional<ColorScheme>> wishes;
    DesktopColorScheme desktop;
    QObject::connect(&desktop, &DesktopColorScheme::reported, &desktop, [&](auto wish) { wishes.push_back(wish); });
    desktop.watch();
    waitUntil([&] { return wishes.size() == 1; });
    portal.announce("contrast", prefersLight); // of another setting
    portal.announce("color-scheme", 0);
    portal.announce("color-scheme", prefersLight);
    waitUntil([&] { return theme.scheme() == ColorScheme::light && wishes.size() >= 3; });
    EXPECT_EQ(wishes, (std::vector<std::optional<ColorScheme>>{ColorScheme::dark, std::nullopt, ColorScheme::light}));
}

}
