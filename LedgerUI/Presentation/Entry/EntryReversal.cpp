#include "LedgerUI/Presentation/Entry/EntryReversal.h"

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Entries/Reversals/ReversalRules.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Entry/EntryCategories.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

QString titleOf(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, std::string_view locale)
{
    auto path = EntryCategories::path(snapshot, entry.categoryID.value_or(std::string{}), locale);
    if (!path.isEmpty())
        return path;
    return wordIn(locale, ledgerWords(), "kind." + entry.transferPurpose.value_or(entry.kind));
}

QString signedAmount(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    const auto digits = qString(Money::formatDigits(minor, currency, locale));
    return minor > 0 ? QLatin1Char{'+'} + digits : digits;
}

void appendRows(std::vector<ReversalRow>& rows, const LedgerTransaction& entry, const LedgerSnapshot& snapshot,
                std::string_view locale, ReversalRow pattern)
{
    const std::int64_t sign = pattern.isOpposite ? -1 : 1;
    for (const auto& leg : entry.legs) {
        auto row = pattern;
        const auto* const account = entry.legs.size() > 1 ? snapshot.account(leg.accountID) : nullptr;
        row.account = account ? qString(account->name) : QString{};
        row.currency = qString(leg.currency);
        row.amount = signedAmount(sign * leg.amountMinor, leg.currency, locale);
        rows.push_back(row);
        // Day and title stand beside the first movement only.
        pattern.day.clear();
        pattern.glyph.clear();
        pattern.title.clear();
    }
}

}

ReversalContent EntryReversal::content(const ReversalSubmission& submission, const LedgerTransaction& original,
                                       const LedgerSnapshot& snapshot, std::string_view today, std::string_view locale)
{
    ReversalContent content;
    const bool isTransfer = original.kind == EntryKind::transfer;
    const auto& sent = submission.command();
    content.title = wordIn(locale, entryFormWords(), "reverse." + original.kind);
    content.explanation = wordIn(locale, EntryCopy::words(), isTransfer ? "correctTransferHint" : "correctEntryHint");
    appendRows(content.rows, original, snapshot, locale,
               {.day = DayText::nearDay(original.date, today, locale),
                .glyph = entryKindGlyph(original.kind),
                .title = titleOf(original, snapshot, locale),
                .account = {},
                .currency = {},
                .amount = {},
                .isOpposite = false});
    appendRows(content.rows, original, snapshot, locale,
               {.day = DayText::nearDay(sent ? std::string_view{sent->date} : today, today, locale),
                .glyph = entryKindGlyph(EntryKind::reversal),
                .title = wordIn(locale, ledgerWords(), "kind.reversal"),
                .account = {},
                .currency = {},
                .amount = {},
                .isOpposite = true});
    content.reason = qString(sent ? sent->reason : submission.form().reason);
    if (submission.form().isReasonMissing)
        content.reasonMessage = wordIn(locale, entryFormWords(), "reasonRequired");
    content.mayEdit = submission.isEditing() && !sent;
    content.resends = sent && (submission.isUncertain() || submission.isEditing());
    if (content.resends)
        content.hint =
            wordIn(locale, entryFormWords(), "reverse.kept", {DayText::longDay(sent->date, locale).toStdString()});
    if (submission.isDone())
        content.confirm = wordIn(locale, EntryCopy::words(), "correctEntry");
    else
        content.confirm = content.resends ? wordIn(locale, EntryWords::words(), "retryOriginal")
                                          : wordIn(locale, EntryCopy::words(), "confirmReversal");
    return content;
}

ReversalSubmission EntryReversal::opened(const std::optional<KeptReversal>& kept)
{
    if (!kept)
        return ReversalSubmission{{}};
    if (kept->outcomeUnknown)
        return ReversalSubmission::uncertain({}, kept->reversal);
    return ReversalSubmission::refused({}, kept->reversal, kept->refusal);
}

ReversalSubmission EntryReversal::afterFailure(ReversalSubmission submission, const Failure& failure,
                                               const std::optional<KeptReversal>& kept)
{
    submission.fail(failure);
    if (!kept)
        return submission.isUncertain() ? submission : ReversalSubmission::unsent(submission.form(), failure);
    if (submission.isUncertain())
        return ReversalSubmission::uncertain(submission.form(), kept->reversal);
    return ReversalSubmission::refused(submission.form(), kept->reversal, failure);
}

QString EntryReversal::whyNot(const ReversalSubmission& submission, const std::string& originalID,
                              const VisibleBooks& books, std::string_view locale)
{
    if (!submission.isEditing())
        return {};
    const auto* const original = books.entry(originalID);
    const auto refusal = original ? ReversalRules::whyNot(*original, books) : ReversalRules::Refusal::notFound;
    return refusal ? qString(ReversalRules::text(*refusal, locale)) : QString{};
}
