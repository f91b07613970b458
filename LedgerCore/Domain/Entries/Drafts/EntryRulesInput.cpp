#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

using Problems = std::vector<EntryProblem>;

std::expected<std::int64_t, MoneyError> amountOf(std::string_view text, std::string_view currency,
                                                 std::string_view locale)
{
    if (currency.empty() || TextFold::trimmed(text).empty())
        return 0;
    return Money::parse(text, currency, locale);
}

/// The day that an opening is booked on is not the draft's to choose.
std::string dayOf(const TransactionDraft& draft, const LedgerSnapshot& snapshot)
{
    if (draft.kind != EntryKind::opening)
        return draft.date;
    return OpeningBalancePolicy::recordingDate(snapshot, draft.date).value_or(draft.date);
}

/// The purpose that the accounts of a transfer give it.
std::optional<std::string> purposeOf(const TransactionDraft& draft, const VisibleBooks& books)
{
    const auto* const source = draft.source ? books.account(*draft.source) : nullptr;
    const auto* const target = draft.target ? books.destination(*draft.target) : nullptr;
    if (draft.kind != EntryKind::transfer || !source || !target)
        return std::nullopt;
    const auto purpose = LedgerEntryAccess::transferPurpose(*source, *target);
    return purpose ? std::optional<std::string>{*purpose} : std::nullopt;
}

/// The first problem of a field stands.
void add(Problems& problems, EntryProblem problem)
{
    if (std::ranges::find(problems, problem.field, &EntryProblem::field) == problems.end())
        problems.push_back(std::move(problem));
}

/// An amount that cannot be read has its own problem; one without a currency cannot be judged yet.
void addUnread(Problems& problems, EntryField field, std::string_view text, const std::string& currency,
               std::string_view locale)
{
    const auto minor = amountOf(text, currency, locale);
    if (!minor)
        problems.push_back(EntryProblem::unread(field, minor.error(), currency));
}

bool awaitsCurrency(const EntryProblem& problem, const TransactionDraft& draft)
{
    const auto waits = [](std::string_view text, std::string_view currency) {
        return currency.empty() && !TextFold::trimmed(text).empty();
    };
    return (problem.field == EntryField::amount && waits(draft.amount, draft.currency)) ||
           (problem.field == EntryField::targetAmount && waits(draft.targetAmount, draft.targetCurrency));
}

Problems problemsOf(const TransactionDraft& draft, const TransactionInput& input, const PostingContext& context,
                    std::string_view locale)
{
    Problems problems;
    addUnread(problems, EntryField::amount, draft.amount, draft.currency, locale);
    if (draft.kind == EntryKind::exchange)
        addUnread(problems, EntryField::targetAmount, draft.targetAmount, draft.targetCurrency, locale);
    for (const auto& refusal : PostingRules::refusals(input, context))
        add(problems, EntryRules::problem(refusal, input, context));
    if (draft.kind == EntryKind::opening && !context.start.empty() && !LedgerDay::isValid(context.start))
        add(problems, {EntryField::account, PostingReason::startUnreadable});
    std::erase_if(problems, [&](const EntryProblem& each) { return awaitsCurrency(each, draft); });
    std::ranges::sort(problems, {}, &EntryProblem::field);
    return problems;
}

}

TransactionInput EntryRules::command(const TransactionDraft& draft, const VisibleBooks& books, std::string_view locale)
{
    TransactionInput input;
    input.kind = draft.kind;
    input.date = dayOf(draft, books.snapshot());
    input.note = TextFold::trimmed(draft.note);
    input.currency = draft.currency;
    input.amountMinor = amountOf(draft.amount, draft.currency, locale).value_or(0);
    input.attachmentIDs = draft.attachments;
    input.idempotencyKey = draft.idempotencyKey;
    (draft.onlyArrives() ? input.targetAccountID : input.sourceAccountID) = draft.primaryAccount();
    if (draft.hasCategory())
        input.categoryID = draft.categoryID;
    if (draft.hasDestination())
        input.targetAccountID = draft.target;
    input.transferPurpose = purposeOf(draft, books);
    if (draft.kind == EntryKind::exchange) {
        input.targetCurrency = draft.targetCurrency;
        input.targetAmountMinor = amountOf(draft.targetAmount, draft.targetCurrency, locale).value_or(0);
    }
    if (draft.kind == EntryKind::refund) {
        input.originalTransactionID = draft.originalIncomeID;
        if (const auto reference = TextFold::trimmed(draft.refundReference); !reference.empty())
            input.externalReference = std::string{reference};
    }
    return input;
}

std::expected<TransactionInput, Problems> EntryRules::input(const TransactionDraft& draft, const VisibleBooks& books,
                                                            std::string_view today, std::string_view locale)
{
    auto input = command(draft, books, locale);
    const auto context = PostingRules::contextOf(input, books, today);
    if (auto problems = problemsOf(draft, input, context, locale); !problems.empty())
        return std::unexpected(std::move(problems));
    return input;
}

std::expected<TransactionInput, Problems> EntryRules::input(const TransactionDraft& draft,
                                                            const LedgerSnapshot& snapshot, std::string_view locale)
{
    return input(draft, VisibleBooks{snapshot}, draft.date, locale);
}

EntryProblem EntryRules::problem(const PostingRefusal& refusal, const TransactionInput& input,
                                 const PostingContext& context)
{
    using Error = EntryValidationError;
    const auto field = refusal.field;
    const bool isExchange = input.kind == EntryKind::exchange;
    const auto currency =
        field == EntryField::targetAmount ? input.targetCurrency.value_or(input.currency) : input.currency;
    switch (refusal.reason) {
    case PostingReason::missing:
        if (field == EntryField::account)
            return {field, Error{Error::AccountRequired{}}};
        if (field == EntryField::category)
            return {field, Error{Error::CategoryRequired{}}};
        return {field, Error{Error::DestinationRequired{}}};
    case PostingReason::currencyMissing:
    case PostingReason::currencyNotHeld:
        if (field == EntryField::destination && !isExchange)
            return {field, Error{Error::DestinationRequired{}}};
        return {field, Error{Error::AccountRequired{}}};
    case PostingReason::notPositive:
        return {field, Error{Error::PositiveAmount{}}};
    case PostingReason::tooLarge:
        return {field, RangeLimit{RangeLimit::Of::amount, currency}};
    case PostingReason::balanceLimit:
        return {field, RangeLimit{RangeLimit::Of::balance, currency}};
    case PostingReason::insufficientFunds:
        return {field, Error{Error::ReserveInsufficient{context.source->balance(input.currency), input.currency}}};
    case PostingReason::reserveUnknown:
        return {field, Error{Error::ReserveUnknown{input.currency}}};
    case PostingReason::refundLimit: {
        const auto received = PostingRules::receivedMinor(*context.original, input.currency);
        return {field, RefundLimit{received - context.refundedMinor, input.currency}};
    }
    default:
        break;
    }
    if (field == EntryField::destination && refusal.reason != PostingReason::sameCurrency)
        return {field, Error{Error::DestinationRequired{}}};
    return {field, refusal.reason};
}
