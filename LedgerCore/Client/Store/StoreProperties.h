#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <QObject>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"

/// What screens observe of the store. Each property is announced when it has changed.
class StoreProperties : public QObject {
    Q_OBJECT
public:
    [[nodiscard]] SnapshotPointer snapshot() const { return m_snapshot; } // null while signed out
    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    [[nodiscard]] const std::optional<std::string>& errorMessage() const { return m_errorMessage; }
    [[nodiscard]] const std::optional<std::string>& noticeMessage() const { return m_noticeMessage; }
    [[nodiscard]] bool isDemo() const { return m_isDemo; }
    /// A company application that awaits review; null without one.
    [[nodiscard]] std::shared_ptr<const PendingCompanyRegistration> pendingCompanyRegistration() const;
    [[nodiscard]] const std::optional<std::string>& preferredAppLocale() const { return m_preferredAppLocale; }
    /// When the snapshot was last replaced by or confirmed equal to the service's; unset while signed out.
    [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastRefresh() const { return m_lastRefresh; }
    /// Whether the last attempt to reload failed since then.
    [[nodiscard]] bool isStale() const { return m_isStale; }
    [[nodiscard]] std::int64_t attachmentCacheBytes() const { return m_attachmentCacheBytes; }

Q_SIGNALS:
    void snapshotChanged();
    void isBusyChanged();
    void errorMessageChanged();
    void noticeMessageChanged();
    void isDemoChanged();
    void pendingCompanyRegistrationChanged();
    void preferredAppLocaleChanged();
    void endpointChanged();
    void lastRefreshChanged();
    void isStaleChanged();
    void keptChanged();
    void attachmentCacheBytesChanged();

protected:
    StoreProperties(std::optional<std::string> preferredAppLocale, QObject* parent);
    ~StoreProperties() override;

    /// Compares first, and announces a change.
    template <class Value>
    void assign(Value& property, Value value, void (StoreProperties::*changed)());
    void requireMainThread() const;

    SnapshotPointer m_snapshot;
    bool m_isBusy = false;
    std::optional<std::string> m_errorMessage;
    std::optional<std::string> m_noticeMessage;
    bool m_isDemo = false;
    std::shared_ptr<const PendingCompanyRegistration> m_pendingCompanyRegistration;
    std::optional<std::string> m_preferredAppLocale;
    std::optional<std::chrono::system_clock::time_point> m_lastRefresh;
    bool m_isStale = false;
    std::int64_t m_attachmentCacheBytes = 0;
};

template <class Value>
void StoreProperties::assign(Value& property, Value value, void (StoreProperties::*changed)())
{
    requireMainThread();
    if (property == value)
        return;
    property = std::move(value);
    Q_EMIT(this->*changed)();
}
