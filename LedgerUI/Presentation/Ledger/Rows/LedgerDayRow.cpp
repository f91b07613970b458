#include "LedgerUI/Presentation/Ledger/Rows/LedgerDayRow.h"

#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

MoneyText amountOf(const std::optional<std::int64_t>& minor, const LedgerTotal& total, std::string_view locale)
{
    return minor ? movementText(*minor, total.currency, locale) : unknownMoney(total.currency);
}

/// A total that only came or only went is its own net amount.
QString spokenTotal(const LedgerTotal& total, std::string_view locale)
{
    const auto said = [](const MoneyText& money) {
        return (money.isKnown() ? money.spoken : money.text()).toStdString();
    };
    const auto net = amountOf(total.net, total, locale);
    if (total.incoming == 0 || total.outgoing == 0)
        return QString::fromStdString(said(net));
    return wordIn(locale, ledgerWords(), "day.total",
                  {said(amountOf(total.incoming, total, locale)), said(amountOf(total.outgoing, total, locale)),
                   said(total.net ? balanceText(*total.net, total.currency, locale) : net)});
}

}

LedgerDayRow dayRowFor(const LedgerListing& listing, const LedgerDayHead& head)
{
    const auto& book = *listing.book;
    const auto& locale = book.locale();
    const auto entries = listing.entriesOf(head);
    LedgerDayRow row{.day = DayText::weekdayAndDay(book.transaction(entries.front()).date, locale),
                     .entries = countedIn(locale, ledgerWords(), "entries", entries.size()),
                     .nets = {},
                     .spoken = {}};
    QStringList said{row.day, row.entries};
    for (const auto& total : totalsOf(listing, entries)) {
        row.nets.push_back(amountOf(total.net, total, locale));
        said << spokenTotal(total, locale);
    }
    row.spoken = listed(said, locale);
    return row;
}
