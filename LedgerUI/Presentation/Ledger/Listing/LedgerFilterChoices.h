#pragma once

#include <string>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"

/// One line of a filter's menu.
struct LedgerFilterChoice {
    enum class Level { top, child };

    std::string id;
    QString text;
    Level level = Level::top;
};

/// What a part can be narrowed to in this book: only what its entries hold, in the order in which people look for it.
std::vector<LedgerFilterChoice> filterChoices(const LedgerBook& book, LedgerFilter::Part part);

/// The ids chosen in one part; those of the receipts part are "attached" and "missing".
LedgerFilter::Choices chosenIn(const LedgerFilter& filter, LedgerFilter::Part part);
LedgerFilter withChosen(LedgerFilter filter, LedgerFilter::Part part, LedgerFilter::Choices choices);

/// A bound of the amounts as it is typed, in the separators of the language; empty for none.
QString amountBoundText(const std::optional<std::int64_t>& hundredths, std::string_view locale);
/// What was typed for a bound: none for an empty text, nothing for one that cannot be read.
std::optional<std::optional<std::int64_t>> readAmountBound(const QString& text, std::string_view locale);

/// "Account".
QString partName(LedgerFilter::Part part, std::string_view locale);
/// What a set part asks for, in words: "Account: Operating bank and 2 more".
QString partText(const LedgerBook& book, const LedgerFilter& filter, LedgerFilter::Part part);
/// Everything that a set part asks for, without its name: "Operating bank, Singapore, Petty cash".
QString partValue(const LedgerBook& book, const LedgerFilter& filter, LedgerFilter::Part part);
