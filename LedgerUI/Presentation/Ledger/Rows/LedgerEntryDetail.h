#pragma once

#include <optional>
#include <string>
#include <vector>

#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerRow.h"

/// One entry with everything that is known of it, as the detail pane shows it.
struct LedgerEntryDetail {
    struct Line {
        QString label;
        QString value;

        bool operator==(const Line&) const = default;
    };
    struct Leg {
        QString account;
        MoneyText amount;
        std::optional<MoneyText> balanceAfter; // where it is known

        bool operator==(const Leg&) const = default;
    };
    struct Link {
        QString label;
        QString text;
        std::string targetID; // empty when the linked entry cannot be seen

        bool operator==(const Link&) const = default;
    };
    struct Receipt {
        std::string id;
        QString name;
        QString size;
        bool isImage = false;

        bool operator==(const Receipt&) const = default;
    };

    std::string id;
    std::string kind;
    QString kindTitle;
    QString title; // the category's path; empty where the kind says all
    bool isReversed = false;
    std::vector<MoneyText> amounts;
    std::vector<Line> lines;
    QString caution; // what looks wrong in them; empty for nothing
    std::vector<Leg> legs;
    std::vector<Link> links;
    std::vector<Receipt> receipts;
    bool takesReceipts = false; // the member may add some, and there is room
    bool offersReversal = false;
    QString correction;             // where or why not to undo the entry, in words; empty when nothing is to be said
    std::optional<PageLink> record; // of owners' money: where its own page shows it

    bool operator==(const LedgerEntryDetail&) const = default;
};

LedgerEntryDetail detailOf(const LedgerBook& book, std::uint32_t at);

/// What was on the account right after the entry, in accounting order; nothing unless the entries that the member sees
/// explain the whole balance of today.
std::optional<std::int64_t> balanceAfter(const LedgerBook& book, std::uint32_t at, const LedgerBook::Leg& leg);
