#include "LedgerUI/Presentation/Ledger/Rows/LedgerRow.h"

#include <algorithm>
#include <optional>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"

namespace {

/// What an entry moves in one currency; nothing when that does not fit a number.
struct CurrencySum {
    std::uint32_t currency = 0; // as the book numbers them
    std::optional<std::int64_t> minor;
};

/// The account that money arrives on from another account of the company.
const LedgerBook::Leg* arrivingLeg(const LedgerBook& book, std::uint32_t at, const LedgerBook::Leg& leading)
{
    const auto legs = book.legs(at);
    const auto found = std::ranges::find_if(legs, [&](const LedgerBook::Leg& leg) {
        return leg.amountMinor > 0 && leading.amountMinor < 0 && leg.account != leading.account;
    });
    return found == legs.end() ? nullptr : &*found;
}

}

std::vector<MoneyText> amountsOf(const LedgerBook& book, std::uint32_t at)
{
    const auto legs = book.legs(at);
    const auto* leading = leadingLeg(book, at);
    if (!leading)
        return {unknownMoney({})};
    if (book.entry(at).isInternal)
        return {balanceText(shownAmount(book, at, *leading), book.currencies().id(leading->currency), book.locale())};
    std::vector<CurrencySum> sums;
    for (const auto& leg : legs) {
        const auto found = std::ranges::find(sums, leg.currency, &CurrencySum::currency);
        if (found == sums.end())
            sums.push_back({leg.currency, leg.amountMinor});
        else if (auto& minor = found->minor)
            minor = Money::add(*minor, leg.amountMinor);
    }
    std::ranges::partition(sums, [](const CurrencySum& sum) { return sum.minor.value_or(0) < 0; });
    std::vector<MoneyText> amounts;
    amounts.reserve(sums.size());
    for (const auto& sum : sums) {
        const auto& currency = book.currencies().id(sum.currency);
        amounts.push_back(sum.minor ? movementText(*sum.minor, currency, book.locale()) : unknownMoney(currency));
    }
    return amounts;
}

LedgerRow rowFor(const LedgerBook& book, std::uint32_t at, std::string_view today)
{
    const auto& entry = book.entry(at);
    const auto& transaction = book.transaction(at);
    LedgerRow row;
    row.id = QString::fromStdString(transaction.id);
    row.kind = book.kinds().id(entry.kind);
    row.day = DayText::nearDay(transaction.date, today, book.locale());
    row.kindTitle = QString::fromStdString(book.names().kind(transaction));
    row.title = QString::fromStdString(book.titles().id(entry.title));
    row.note = QString::fromStdString(transaction.note).simplified();
    row.member = QString::fromStdString(book.names().member(transaction.memberID));
    if (const auto* leading = leadingLeg(book, at)) {
        row.account = QString::fromStdString(book.names().account(book.accounts().id(leading->account)));
        if (const auto* arriving = arrivingLeg(book, at, *leading))
            row.destination = QString::fromStdString(book.names().account(book.accounts().id(arriving->account)));
    }
    row.amounts = amountsOf(book, at);
    row.receiptCount = transaction.attachmentIDs.size();
    row.isReversed = transaction.reversedBy.has_value();
    return row;
}
