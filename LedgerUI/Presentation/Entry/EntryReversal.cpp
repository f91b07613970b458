#include "LedgerUI/Presentation/Entry/EntryReversal.h"

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Entry/EntryCategories.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Entry/EntryFormWords.h"
#include "LedgerUI/Presentation/Entry/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

QString titleOf(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, std::string_view locale)
{
    auto path = EntryCategories::path(snapshot, entry.categoryID.value_or(std::string{}), locale);
    if (!path.isEmpty())
        return path;
    return entryWord("kind." + entry.transferPurpose.value_or(entry.kind), locale);
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

ReversalContent EntryReversal::content(const ReversalState& state, const LedgerTransaction& original,
                                       const LedgerSnapshot& snapshot, std::string_view day, std::string_view locale)
{
    ReversalContent content;
    const bool isTransfer = original.kind == EntryKind::transfer;
    content.title = entryWord("reverse." + original.kind, locale);
    content.explanation = entryWord(isTransfer ? "correctTransferHint" : "correctEntryHint", locale);
    appendRows(content.rows, original, snapshot, locale,
               {.day = DayText::shortDay(original.date, locale),
                .glyph = entryKindGlyph(original.kind),
                .title = titleOf(original, snapshot, locale),
                .account = {},
                .currency = {},
                .amount = {},
                .isOpposite = false});
    appendRows(content.rows, original, snapshot, locale,
               {.day = DayText::shortDay(day, locale),
                .glyph = entryKindGlyph(EntryKind::reversal),
                .title = entryWord("kind.reversal", locale),
                .account = {},
                .currency = {},
                .amount = {},
                .isOpposite = true});
    content.reason = qString(reasonOf(state));
    const auto* typing = std::get_if<ReversalTyping>(&state);
    if (typing && typing->isReasonMissing)
        content.reasonMessage = entryWord("reasonRequired", locale);
    if (std::holds_alternative<ReversalUncertain>(state) || std::holds_alternative<ReversalKept>(state))
        content.confirm = entryWord("retryOriginal", locale);
    else
        content.confirm =
            entryWord(std::holds_alternative<ReversalDone>(state) ? "correctEntry" : "confirmReversal", locale);
    return content;
}

ReversalState EntryReversal::opened(const std::optional<Reversal>& kept)
{
    return kept ? ReversalState{ReversalKept{.reason = kept->reason, .mayBePosted = true}} : ReversalTyping{};
}

ReversalState EntryReversal::afterReply(const ReversalSending& sending, const Result<void>& reply,
                                        const std::optional<Reversal>& kept)
{
    using EntryForm::Attempt;
    if (reply)
        return ReversalDone{sending.reason};
    if (EntryForm::leavesUncertain(reply.error(), sending.isRetry ? Attempt::retry : Attempt::first))
        return ReversalUncertain{sending.reason};
    return kept ? ReversalState{ReversalKept{.reason = kept->reason}} : ReversalTyping{.reason = sending.reason};
}

const std::string& EntryReversal::reasonOf(const ReversalState& state)
{
    return std::visit([](const auto& each) -> const std::string& { return each.reason; }, state);
}
