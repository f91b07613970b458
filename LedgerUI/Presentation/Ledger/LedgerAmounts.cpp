#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

void add(std::optional<std::int64_t>& sum, std::int64_t amount)
{
    if (sum)
        sum = Money::add(*sum, amount);
}

}

std::size_t pickerPlace(std::string_view code)
{
    const auto supported = CurrencyInfo::supported();
    return static_cast<std::size_t>(std::ranges::find(supported, code, &CurrencyInfo::code) - supported.begin());
}

const LedgerBook::Leg* leadingLeg(const LedgerBook& book, std::uint32_t at)
{
    const auto legs = book.legs(at);
    const auto leaving = std::ranges::find_if(legs, [](const auto& leg) { return leg.amountMinor < 0; });
    if (leaving != legs.end())
        return &*leaving;
    return legs.empty() ? nullptr : &legs.front();
}

std::int64_t shownAmount(const LedgerBook& book, std::uint32_t at, const LedgerBook::Leg& leg)
{
    const bool turned =
        book.entry(at).isInternal && leg.amountMinor < 0 && leg.amountMinor != std::numeric_limits<std::int64_t>::min();
    return turned ? -leg.amountMinor : leg.amountMinor;
}

std::vector<LedgerTotal> totals(const LedgerBook& book, std::span<const std::uint32_t> rows)
{
    std::vector<std::optional<LedgerTotal>> byCurrency(book.currencies().size());
    for (const auto at : rows) {
        if (book.entry(at).isInternal)
            continue;
        const bool takesBack = book.entry(at).isReversal;
        for (const auto& leg : book.legs(at)) {
            auto& total = byCurrency[leg.currency];
            if (!total)
                total = LedgerTotal{.currency = book.currencies().id(leg.currency)};
            add((leg.amountMinor > 0) != takesBack ? total->incoming : total->outgoing, leg.amountMinor);
            add(total->net, leg.amountMinor);
        }
    }
    std::vector<LedgerTotal> result;
    for (auto& total : byCurrency) {
        if (total)
            result.push_back(std::move(*total));
    }
    std::ranges::sort(result, {}, [](const LedgerTotal& total) {
        return std::pair{pickerPlace(total.currency), std::string_view{total.currency}};
    });
    return result;
}

LedgerTotal figureTotal(std::string currency, std::span<const ReportFigureLeg> legs,
                        std::span<const std::uint32_t> rows)
{
    LedgerTotal total{.currency = std::move(currency)};
    for (const auto at : rows) {
        for (const auto& leg : std::ranges::equal_range(legs, at, {}, &ReportFigureLeg::entry)) {
            add((leg.amountMinor > 0) != leg.reverses ? total.incoming : total.outgoing, leg.amountMinor);
            add(total.net, leg.amountMinor);
        }
    }
    return total;
}
