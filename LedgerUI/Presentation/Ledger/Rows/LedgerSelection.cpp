#include "LedgerUI/Presentation/Ledger/Rows/LedgerSelection.h"

#include <utility>

#include <QStringList>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerListing.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

LedgerSelection LedgerSelection::of(const LedgerListing& listing, std::vector<std::uint32_t> entries)
{
    if (entries.empty())
        return {};
    // The sums of all rows are known already.
    auto sums = entries.size() == listing.rows.size() ? listing.totals : totalsOf(listing, entries);
    auto one = entries.size() == 1 ? std::optional{detailOf(*listing.book, entries.front())} : std::nullopt;
    return {.book = listing.book, .entries = std::move(entries), .sums = std::move(sums), .one = std::move(one)};
}

QString LedgerSelection::count(std::string_view locale) const
{
    return countedIn(locale, ledgerWords(), "selected", entries.size());
}

std::vector<MoneyText> LedgerSelection::amounts(std::string_view locale) const
{
    std::vector<MoneyText> amounts;
    for (const auto& sum : sums) {
        if (sum.net)
            amounts.push_back(movementText(*sum.net, sum.currency, locale));
    }
    return amounts;
}

QString LedgerSelection::figures(std::string_view locale, std::size_t shown) const
{
    const auto all = amounts(locale);
    QStringList figures;
    for (const auto& each : all) {
        if (figures.size() == static_cast<qsizetype>(shown)) {
            figures << QStringLiteral("+%1").arg(all.size() - shown);
            break;
        }
        figures << each.text();
    }
    return figures.join(QStringLiteral("   "));
}
