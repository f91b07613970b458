#include "LedgerUI/Presentation/Entry/EntryDouble.h"

#include <QStringList>

#include "LedgerUI/Presentation/Entry/EntryCategories.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

QString EntryDouble::warning(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, std::string_view locale)
{
    QStringList parts{wordIn(locale, ledgerWords(), "kind." + entry.transferPurpose.value_or(entry.kind))};
    parts << EntryCategories::path(snapshot, entry.categoryID.value_or(std::string{}), locale) << qString(entry.note);
    return wordIn(locale, entryFormWords(), "double", {listed(parts, locale).toStdString()});
}

QString EntryDouble::facts(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, std::string_view locale)
{
    const LedgerNames names{snapshot, std::string{locale}};
    QStringList lines;
    const auto add = [&](const std::string& label, const QString& value) {
        if (!value.isEmpty())
            lines << wordIn(locale, ledgerWords(), "chip", {label, value.toStdString()});
    };
    const auto addNamed = [&](std::string_view key, const QString& value) {
        add(wordIn(locale, ledgerWords(), key).toStdString(), value);
    };
    addNamed("detail.date", DayText::weekdayAndDay(entry.date, locale));
    for (const auto& leg : entry.legs)
        add(names.account(leg.accountID), movementText(leg.amountMinor, leg.currency, locale).text());
    addNamed("detail.note", qString(entry.note));
    addNamed("detail.reference", qString(entry.externalReference.value_or(std::string{})));
    addNamed("detail.recorded", DayText::moment(entry.createdAt, locale));
    addNamed("detail.member", qString(names.member(entry.memberID)));
    if (!entry.attachmentIDs.empty())
        addNamed("detail.receipts", qString(groupedNumber(entry.attachmentIDs.size(), locale)));
    return lines.join(QLatin1Char('\n'));
}
