#pragma once

#include <chrono>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

/// One line of an amount cell: the code at the left, the signed digits at the right.
struct LedgerAmount {
    enum class Tone { plain, incoming, none }; // `incoming` takes the kind's colour, `none` stands for no amount

    QString currency;
    QString digits;
    Tone tone = Tone::plain;

    bool operator==(const LedgerAmount&) const = default;
};

/// An entry as the ledger's table shows it.
struct LedgerRow {
    QString id;
    std::string_view kind; // as `displayKind` tells it; glyph and colour go by it
    QString day;
    QString title;
    QString note;
    QString account;
    QString destination; // empty unless money moved to another account
    QString member;
    std::vector<LedgerAmount> amounts; // one a currency, the sent one first
    std::size_t receiptCount = 0;
    bool isReversed = false;
};

/// The row of one entry. Days of other years than `today`'s carry their year. `kind` points into the book.
LedgerRow rowFor(const LedgerBook& book, std::uint32_t at, std::chrono::year_month_day today);

/// The amounts of an entry, one a currency; transfers are shown without a sign.
std::vector<LedgerAmount> amountsOf(const LedgerBook& book, std::uint32_t at);

/// One amount with its sign: "+16,074.00" in the tone of incoming money, "−12,000.00".
LedgerAmount signedAmount(std::int64_t minor, std::string_view currency, std::string_view locale);

/// An amount as a screen reader says it: "minus 38,600,000 Vietnamese dong".
QString spokenAmount(const LedgerAmount& amount, std::string_view locale);
