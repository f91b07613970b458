#pragma once

#include <QDBusVirtualObject>
#include <QProcess>
#include <QTemporaryDir>

/// A session bus of the test's own with a Secret Service behind it, which the program finds in its environment. Made
/// once per process, before anything asks for the session bus, and there until the process ends.
class PrivateKeyring : public QDBusVirtualObject {
public:
    static PrivateKeyring& shared();

    /// Has the Secret Service run and answer, with its keyring open.
    void unlock();
    void lock();
    /// Ends the Secret Service; the bus stays.
    void remove();
    /// The Secret Service takes calls and answers none until it is unlocked again.
    void silence();

    /// How often a person would have been asked for a password.
    [[nodiscard]] int prompts() const { return m_prompts; }
    /// The items of this account that the keyring shows without being unlocked.
    [[nodiscard]] int itemCount(const QString& account) const;

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    PrivateKeyring();
    void startBus();

    QTemporaryDir m_folder;
    QProcess m_bus;
    QProcess m_daemon;
    int m_prompts = 0;
};
