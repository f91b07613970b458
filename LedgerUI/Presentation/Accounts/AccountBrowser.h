#pragma once

#include <chrono>
#include <string>

#include <QCoro/QCoroTask>
#include <QObject>

#include "LedgerUI/Presentation/Accounts/AccountListing.h"

/// Where a person stands on the page of accounts: the books, what is looked for, and the rows that result. Large books
/// are gone through on a worker; what is shown stays until the answer is there.
class AccountBrowser final : public QObject {
    Q_OBJECT
public:
    explicit AccountBrowser(QObject* parent = nullptr);

    /// Goes on with another snapshot or language. Null forgets all.
    void open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today);
    void setQuery(AccountQuery query);

    [[nodiscard]] const AccountListingPointer& listing() const { return m_listing; } // null until there is one
    [[nodiscard]] const AccountQuery& query() const { return m_query; }
    /// Whether newer books are still being gone through.
    [[nodiscard]] bool isPreparing() const { return m_isWorking; }

Q_SIGNALS:
    void changed();

private:
    static QCoro::Task<AccountBookPointer> bookOnWorker(SnapshotPointer snapshot, std::chrono::year_month_day today);
    void ask();
    void list(AccountBookPointer book);

    SnapshotPointer m_snapshot;
    std::string m_locale;
    std::chrono::year_month_day m_today;
    AccountQuery m_query;
    AccountListingPointer m_listing;
    bool m_isWorking = false;
};
