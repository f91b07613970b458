#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QCoro/QCoroTask>
#include <QObject>

#include "LedgerCore/Client/Failure.h"
#include "LedgerCore/Domain/LedgerSnapshot.h"
#include "LedgerCore/Domain/TransactionInput.h"

class APIClient;
class Clock;
class IdentifierSource;
class LanguageDefaults;
class SessionCredentialStore;
struct PendingCompanyRegistration;

/// The one stateful object of the client: session, snapshot and what the interface shows meanwhile. Screens observe
/// it and call its operations; each operation is one request, and one runs at a time. Main thread only.
class LedgerStore final : public QObject {
    Q_OBJECT
public:
    /// What the store reaches outside the process through. Shared with tests' fakes; must outlive the store.
    struct Environment {
        SessionCredentialStore& credentials;
        LanguageDefaults& languageDefaults;
        Clock& clock;
        IdentifierSource& identifiers;
    };

    LedgerStore(std::string baseURL, Environment environment, QObject* parent = nullptr);
    ~LedgerStore() override;

    [[nodiscard]] SnapshotPointer snapshot() const { return m_snapshot; } // null while signed out
    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    [[nodiscard]] const std::optional<std::string>& errorMessage() const { return m_errorMessage; }
    [[nodiscard]] const std::optional<std::string>& noticeMessage() const { return m_noticeMessage; }
    [[nodiscard]] bool isDemo() const { return m_isDemo; }
    [[nodiscard]] const std::optional<std::string>& preferredAppLocale() const { return m_preferredAppLocale; }
    [[nodiscard]] const std::string& serverURL() const { return m_endpoint; }

    /// The tag of the interface language in force: the chosen one, else the system's.
    [[nodiscard]] std::string locale() const;
    /// When the snapshot was last replaced by or confirmed equal to the service's; unset while signed out.
    [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastRefresh() const { return m_lastRefresh; }
    /// Today's day here, by the store's clock.
    [[nodiscard]] std::string today() const;
    /// A fresh idempotency key.
    [[nodiscard]] std::string newIdentifier();

    void setAppLanguage(std::optional<std::string> code);
    void setServerURL(std::string address);
    /// Clears `errorMessage` and `noticeMessage`.
    void dismissMessages();

    /// What the user reads about a failure, in `locale` or else the language in force.
    [[nodiscard]] std::string friendly(const Failure& failure, std::optional<std::string> locale = {}) const;

    QCoro::Task<Result<void>> refresh(bool publishError);
    QCoro::Task<Result<void>> refreshFromUser();
    QCoro::Task<Result<void>> login(std::string email, std::string password);
    QCoro::Task<Result<void>> startDemo(std::optional<std::string> locale, std::string profile);
    QCoro::Task<Result<void>> logout();
    QCoro::Task<Result<void>> postTransaction(TransactionInput input, bool publishError);
    QCoro::Task<Result<void>> reverseTransaction(std::string id, std::string reason);

Q_SIGNALS:
    void snapshotChanged();
    void isBusyChanged();
    void errorMessageChanged();
    void noticeMessageChanged();
    void isDemoChanged();
    void preferredAppLocaleChanged();
    void endpointChanged();
    void lastRefreshChanged();

private:
    SnapshotPointer m_snapshot;
    bool m_isBusy = false;
    std::optional<std::string> m_errorMessage;
    std::optional<std::string> m_noticeMessage;
    bool m_isDemo = false;
    std::optional<std::string> m_preferredAppLocale;
    std::string m_endpoint;
    std::optional<std::chrono::system_clock::time_point> m_lastRefresh;
    Environment m_environment;
};
