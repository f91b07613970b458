#include "LedgerUI/Presentation/Ledger/EntryText.h"

#include <algorithm>

#include <QStringList>

#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"

QString EntryText::brief(std::string_view entryID, const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto* entry = snapshot.entry(entryID);
    if (!entry)
        return {};
    const LedgerNames names{snapshot, std::string{locale}};
    QStringList parts{DayText::shortDate(entry->date, locale), qString(names.kind(*entry))};
    if (!entry->legs.empty()) {
        const auto& leg = entry->legs.front();
        parts << movementText(leg.amountMinor, leg.currency, locale).text();
    }
    return parts.join(QStringLiteral(" · "));
}
