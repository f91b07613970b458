#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Accounts/AccountBook.h"
#include "LedgerUI/Presentation/Ledger/AccountGroup.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// The order of the accounts inside a group.
struct AccountSort {
    enum class Key { name, balance };
    enum class Direction { ascending, descending };

    Key key = Key::name;
    Direction direction = Direction::ascending;
    std::string currency = {}; // whose balance; accounts without it stand last

    bool operator==(const AccountSort&) const = default;

    /// The same key again turns the order; names begin with the first letter, balances with the largest.
    [[nodiscard]] AccountSort by(Key wanted, const std::string& wantedCurrency = {}) const;
    [[nodiscard]] AccountSort turned() const;
};

/// What a person asks the page of accounts for.
struct AccountQuery {
    QString search;
    bool showsArchived = false;
    AccountSort sort = {};

    bool operator==(const AccountQuery&) const = default;
};

/// A row of the table: the head of a group, or an account in one of its currencies.
struct AccountRow {
    std::string id; // see `accountRowID`; of a head its group
    AccountGroup group = AccountGroup::company;
    bool isHead = false;
    bool isFirst = true; // of its account
    bool isLast = true;
    std::size_t line = 0; // of the book; nothing for a head
    QString name;
    QString glyph;
    QString currency;
    MoneyText incoming = {};
    MoneyText outgoing = {};
    MoneyText balance = {};
};

/// What stands in place of an empty table.
struct AccountNotice {
    enum class Reason { noAccounts, noAccess, noMatch, onlyArchived };
    enum class Remedy { clearSearch, showArchived };
    struct Offer {
        Remedy remedy = Remedy::clearSearch;
        QString text;

        bool operator==(const Offer&) const = default;
    };

    Reason reason = Reason::noAccounts;
    QString headline;
    QString sentence;
    std::optional<Offer> offer = {};

    bool operator==(const AccountNotice&) const = default;
};

/// The answer to a query over one book in one language.
struct AccountListing {
    AccountBookPointer book;
    AccountQuery query;
    std::string locale;
    std::vector<AccountRow> rows;
    std::size_t accounts = 0;
    std::vector<MoneyText> totals;
    std::vector<std::string> currencies; // held by any account, in the order of the pickers
    std::optional<AccountNotice> notice; // where there are no rows

    /// The row of this id, or -1.
    [[nodiscard]] int rowOf(std::string_view id) const;
};
using AccountListingPointer = std::shared_ptr<const AccountListing>;

/// An account in one currency as the table, its selection and links name it.
std::string accountRowID(std::string_view accountID, std::string_view currency);

AccountListing accountListing(AccountBookPointer book, AccountQuery query, std::string locale);
