#include "LedgerUI/Presentation/Entry/EntryLabels.h"

#include "LedgerCore/Domain/Entries/Drafts/EntryProblem.h"
#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

std::string_view transferConfirmation(std::string_view purpose)
{
    if (purpose == TransferPurpose::funding)
        return "confirmFunding";
    return purpose == TransferPurpose::returning ? "confirmReturn" : "confirmTransfer";
}

}

QString EntryLabels::account(std::string_view kind, std::string_view locale)
{
    if (kind == EntryKind::income)
        return wordIn(locale, EntryCopy::words(), "receivingAccount");
    if (kind == EntryKind::transfer)
        return wordIn(locale, entryFormWords(), "fromAccount");
    if (kind == EntryKind::exchange)
        return wordIn(locale, entryFormWords(), "sentFrom");
    return kind == EntryKind::opening ? wordIn(locale, entryFormWords(), "account")
                                      : wordIn(locale, EntryCopy::words(), "paymentAccount");
}

QString EntryLabels::noAccount(std::string_view kind, std::string_view locale)
{
    return kind == EntryKind::opening ? wordIn(locale, entryFormWords(), "noOpeningAccount")
                                      : wordIn(locale, EntryWords::words(), "noAccount");
}

QString EntryLabels::confirmation(std::string_view kind, std::string_view purpose, std::string_view locale)
{
    const auto& words = EntryWords::words();
    if (kind == EntryKind::income)
        return wordIn(locale, words, "saveIncome");
    if (kind == EntryKind::transfer)
        return wordIn(locale, words, transferConfirmation(purpose));
    if (kind == EntryKind::exchange)
        return wordIn(locale, words, "confirmExchange");
    if (kind == EntryKind::refund)
        return wordIn(locale, entryFormWords(), "saveRefund");
    return wordIn(locale, words, kind == EntryKind::opening ? "saveOpening" : "saveExpense");
}

QString EntryLabels::direction(std::string_view kind, std::string_view locale)
{
    const auto& words = EntryWords::words();
    if (kind == EntryKind::transfer)
        return wordIn(locale, words, "transferDirection");
    if (kind == EntryKind::exchange)
        return wordIn(locale, words, "exchangeDirection");
    return kind == EntryKind::opening ? wordIn(locale, words, "openingHint") : QString{};
}

QString EntryLabels::refusedExpression(AmountExpression::Error error, std::string_view currency,
                                       std::string_view locale)
{
    using enum AmountExpression::Error;
    switch (error) {
    case notExact:
        return wordIn(locale, entryFormWords(), "expression.notExact", {currency});
    case dividesByZero:
        return wordIn(locale, entryFormWords(), "expression.dividesByZero");
    case outOfRange:
        return qString(RangeLimit{RangeLimit::Of::amount, std::string{currency}}.message(locale));
    case unsupportedCurrency:
        return qString(friendlyMessage(MoneyError::unsupportedCurrency, locale));
    case unreadable:
        break;
    }
    return wordIn(locale, entryFormWords(), "expression.unreadable");
}

QString EntryLabels::refusedPaste(PasteRefusal refusal, std::string_view locale)
{
    switch (refusal) {
    case PasteRefusal::negative:
        return wordIn(locale, entryFormWords(), "paste.negative");
    case PasteRefusal::several:
        return wordIn(locale, entryFormWords(), "paste.several");
    case PasteRefusal::notAnAmount:
        return wordIn(locale, entryFormWords(), "paste.notAnAmount");
    }
    return {};
}
