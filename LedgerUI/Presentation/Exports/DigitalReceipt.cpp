#include "LedgerUI/Presentation/Exports/DigitalReceipt.h"

#include <algorithm>
#include <memory>

#include <QColor>
#include <QStringList>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Settings/TransactionColorOptions.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerRow.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Line = DigitalReceipt::Line;

/// The books with nothing but this entry: names and amounts are asked for as of the whole ledger, at no cost.
LedgerBook bookOf(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, const std::string& locale)
{
    const auto alone = std::make_shared<LedgerSnapshot>();
    alone->company = snapshot.company;
    alone->currentMember = snapshot.currentMember;
    alone->members = snapshot.members;
    alone->accounts = snapshot.accounts;
    alone->categories = snapshot.categories;
    alone->transferDestinations = snapshot.transferDestinations;
    alone->transactions = {entry};
    return LedgerBook{alone, locale};
}

/// Where the money came from and went to; an account that stands on both sides of an exchange is said for both.
void addAccounts(std::vector<Line>& lines, const LedgerTransaction& entry, const LedgerNames& names)
{
    for (const bool leaving : {true, false}) {
        const auto label = wordIn(names.locale(), EntryCopy::words(), leaving ? "paymentAccount" : "receivingAccount");
        for (const auto& leg : entry.legs) {
            const Line line{label, qString(names.account(leg.accountID))};
            if ((leg.amountMinor < 0) == leaving && std::ranges::find(lines, line) == lines.end())
                lines.push_back(line);
        }
    }
}

std::vector<Line> linesOf(const LedgerTransaction& entry, const LedgerNames& names, const DigitalReceiptChoice& choice)
{
    const auto& locale = choice.locale;
    std::vector<Line> lines;
    const auto add = [&](const QString& label, const QString& value) {
        if (!value.isEmpty())
            lines.push_back({label, value});
    };
    const auto ledgerWord = [&](std::string_view key) { return wordIn(locale, ledgerWords(), key); };
    add(ledgerWord("detail.date"), DayText::longDay(entry.date, locale));
    if (choice.showsAccount)
        addAccounts(lines, entry, names);
    if (choice.showsNote)
        add(ledgerWord("detail.note"), qString(entry.note));
    add(ledgerWord("detail.reference"), qString(entry.externalReference.value_or(std::string{})));
    add(ledgerWord("detail.participant"), qString(entry.participantName.value_or(std::string{})));
    if (choice.showsRecorder)
        add(ledgerWord("detail.member"), qString(names.member(entry.memberID)));
    add(wordIn(locale, EntryCopy::words(), "recordedTime"), DayText::moment(entry.createdAt, locale));
    add(wordIn(locale, exportWords(), "print.id"), qString(entry.id));
    return lines;
}

}

DigitalReceipt DigitalReceipts::of(const LedgerTransaction& entry, const LedgerSnapshot& snapshot,
                                   const DigitalReceiptChoice& choice, std::string_view today)
{
    const auto& locale = choice.locale;
    const auto book = bookOf(entry, snapshot, locale);
    const auto kind = displayKind(entry);
    DigitalReceipt receipt;
    receipt.title = wordIn(locale, EntryCopy::words(), "digitalReceipt");
    receipt.company = qString(snapshot.company.name);
    receipt.glyph = entryKindGlyph(kind);
    receipt.kindColor = QColor{qString(TransactionColorOptions::of(kind, snapshot).lightHex)}.rgb();
    receipt.kindTitle = qString(book.names().kind(entry));
    receipt.isReversed = entry.reversedBy.has_value();
    if (receipt.isReversed)
        receipt.kindTitle = wordIn(locale, exportWords(), "print.reversed", {receipt.kindTitle.toStdString()});
    receipt.amounts = amountsOf(book, 0);
    if (entry.categoryID)
        receipt.category = qString(book.names().category(*entry.categoryID));
    receipt.lines = linesOf(entry, book.names(), choice);
    const auto day = DayText::longDay(today, locale).toStdString();
    receipt.foot = wordIn(locale, receiptWords(), "share.foot", {day});
    receipt.fileName = QStringLiteral("tallyfold-receipt-") + qString(entry.date);
    return receipt;
}

QString DigitalReceipts::text(const DigitalReceipt& receipt)
{
    QStringList all{receipt.company, receipt.title, receipt.kindTitle};
    for (const auto& amount : receipt.amounts)
        all << amount.text();
    all << receipt.category;
    for (const auto& line : receipt.lines)
        all << QStringLiteral("%1: %2").arg(line.label, line.value);
    all << receipt.foot;
    all.removeAll(QString{});
    return all.join(QLatin1Char('\n'));
}
