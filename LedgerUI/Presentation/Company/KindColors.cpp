#include "LedgerUI/Presentation/Company/KindColors.h"

std::span<const std::string_view> KindColors::kinds()
{
    return EntryKind::all;
}

const TransactionColorOption& KindColors::ofCompany(std::string_view kind, const LedgerSnapshot& snapshot)
{
    LedgerSnapshot company;
    company.company.transactionColors = snapshot.company.transactionColors;
    return TransactionColorOptions::of(kind, company);
}
