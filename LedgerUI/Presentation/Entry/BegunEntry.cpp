#include "LedgerUI/Presentation/Entry/BegunEntry.h"

#include <QStringList>

#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

TransactionDraft BegunEntry::continued(const EntryDraft& draft, std::string_view locale)
{
    auto entry = draft.entry;
    for (auto* amount : {&entry.amount, &entry.targetAmount})
        *amount = EntryForm::rewritten(*amount, draft.locale, locale);
    return entry;
}

QString BegunEntry::offer(const EntryDraft& draft, const LedgerSnapshot& snapshot, std::string_view locale)
{
    constexpr qsizetype longestNote = 40;
    const LedgerNames names{snapshot, std::string{locale}};
    const auto entry = continued(draft, locale);
    QStringList parts{wordIn(locale, ledgerWords(), "kind." + entry.kind)};
    if (entry.categoryID)
        parts << qString(names.category(*entry.categoryID));
    if (const auto& account = entry.primaryAccount())
        parts << qString(names.account(*account));
    if (!entry.amount.empty())
        parts << QStringLiteral("%1 %2").arg(qString(entry.currency), qString(entry.amount));
    if (const auto note = qString(entry.note).simplified(); !note.isEmpty())
        parts << (note.size() > longestNote ? note.left(longestNote) + QChar{0x2026} : note);
    if (!draft.changedAt.empty())
        parts << DayText::moment(draft.changedAt, locale);
    return wordIn(locale, entryFormWords(), "begun.offer", {parts.join(QStringLiteral(" · ")).toStdString()});
}
