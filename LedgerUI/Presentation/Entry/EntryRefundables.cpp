#include "LedgerUI/Presentation/Entry/EntryRefundables.h"

#include <ranges>

#include <QStringList>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

std::int64_t movedMinor(const LedgerTransaction& entry, std::string_view currency)
{
    std::int64_t sum = 0;
    for (const auto& leg : entry.legs) {
        if (leg.currency == currency)
            sum = Money::add(sum, leg.amountMinor).value_or(sum);
    }
    return sum;
}

}

std::vector<EntryRefundableRow> EntryForm::refundableRows(const LedgerSnapshot& snapshot, std::string_view currency,
                                                          std::string_view locale)
{
    const CategoryDirectory directory{snapshot.categories};
    std::vector<EntryRefundableRow> rows;
    for (const auto& income : EntryRules::refundableIncomes(snapshot, currency) | std::views::reverse) {
        const auto& entry = *income.entry;
        auto received = qString(Money::format(movedMinor(entry, currency), currency, locale));
        QStringList parts{DayText::longDay(entry.date, locale), received.replace(QLatin1Char{' '}, QChar::Nbsp)};
        if (const auto* category = directory.find(entry.categoryID.value_or(std::string{})))
            parts << qString(directory.fullPathName(*category, locale));
        if (!entry.note.empty())
            parts << qString(entry.note);
        const auto remaining = Money::format(income.remainingMinor, currency, locale);
        rows.push_back({entry.id, listed(parts, locale), wordIn(locale, entryFormWords(), "refundable", {remaining})});
    }
    return rows;
}
