#pragma once

#include <string>

#include <QObject>

#include "LedgerUI/Presentation/Accounts/AccountDraft.h"

class AccountFormDialog;
class LedgerStore;
class QWidget;

/// The forms that open over the page of accounts, each on the account as the store has it when it opens.
class AccountDialogs final : public QObject {
    Q_OBJECT
public:
    /// The dialogs open over the window of `page`.
    AccountDialogs(LedgerStore& store, QWidget* page);

    void create();
    void edit(const std::string& accountID, AccountField first = AccountField::name);
    /// Takes it out of use, or back into it.
    void changeState(const std::string& accountID);
    void recordOpening(const std::string& accountID, const std::string& currency);

Q_SIGNALS:
    /// An account is as it was asked for. The id is empty when nobody can tell it.
    void changed(const QString& accountID, const QString& sentence);
    void openingRecorded();

private:
    void open(AccountFormDialog* form);

    LedgerStore& m_store;
    QWidget* m_page;
};
