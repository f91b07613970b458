#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "LedgerUI/Presentation/Accounts/AccountBook.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerEntryDetail.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// One account in one of its currencies with all that is known of it, as the detail pane shows it.
struct AccountDetail {
    using Property = LedgerEntryDetail::Line;

    /// The balance at the end of each of the last twelve months.
    struct Trend {
        std::array<std::int64_t, AccountBook::months> values{};
        QString spoken;

        bool operator==(const Trend&) const = default;
    };
    struct Movement {
        std::string entryID;
        std::string kind; // as `displayKind` tells it
        QString day;
        QString title;
        MoneyText amount;
        QString spoken;
        bool isReversed = false;

        bool operator==(const Movement&) const = default;
    };

    std::string accountID;
    std::string currency;
    QString name;
    QString glyph;
    QString balanceLabel;
    MoneyText balance;
    std::optional<Trend> trend; // where the entries explain the balance
    std::vector<Property> properties;
    std::vector<Movement> latest;
    bool isArchived = false;
    bool offersChange = false;  // for who manages the company
    bool offersOpening = false; // the policy lets the member record one

    bool operator==(const AccountDetail&) const = default;
};

AccountDetail accountDetail(const AccountBook& book, const AccountBook::Line& line, std::string_view locale);
