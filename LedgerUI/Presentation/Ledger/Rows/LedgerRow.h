#pragma once

#include <string_view>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Ledger/LedgerBook.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// An entry as the ledger's table shows it.
struct LedgerRow {
    QString id;
    std::string_view kind; // as `displayKind` tells it; glyph and colour go by it
    QString day;
    QString kindTitle; // "Expense"
    QString title;     // the category where the entry has one, else the kind
    QString note;
    QString account;
    QString destination; // empty unless money moved to another account
    QString member;
    std::vector<MoneyText> amounts; // one per currency, the sent one first
    std::size_t receiptCount = 0;
    bool isReversed = false;
};

/// The row of one entry. Days of other years than `today`'s ("2026-11-20") carry their year. `kind` points into the
/// book.
LedgerRow rowFor(const LedgerBook& book, std::uint32_t at, std::string_view today);

/// The amounts of an entry, one per currency; transfers are shown without a sign.
std::vector<MoneyText> amountsOf(const LedgerBook& book, std::uint32_t at);
