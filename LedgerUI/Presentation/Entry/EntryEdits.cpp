#include "LedgerUI/Presentation/Entry/EntryEdits.h"

#include <algorithm>
#include <ranges>

#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Entry/EntryMessages.h"

namespace {

struct LastUse {
    std::optional<std::string> accountID;
    std::optional<std::string> currency;
};

/// Where the member last recorded an entry of this kind.
LastUse lastUse(const LedgerSnapshot& snapshot, std::string_view kind)
{
    const LedgerTransaction* latest = nullptr;
    for (const auto& entry : snapshot.transactions) {
        if (entry.kind == kind && entry.memberID == snapshot.currentMember.id && !entry.legs.empty() &&
            (!latest || entry.createdAt >= latest->createdAt))
            latest = &entry;
    }
    if (!latest)
        return {};
    return {latest->legs.front().accountID, latest->legs.front().currency};
}

/// Where openings can be recorded and what stands before them is looked up once: it takes walks through all entries.
void findOpenings(EntryEditing& editing, const LedgerSnapshot& snapshot)
{
    editing.openings.clear();
    editing.earliestDay.reset();
    if (editing.draft.kind != EntryKind::opening)
        return;
    editing.earliestDay = OpeningBalancePolicy::earliestVisibleTransactionDay(snapshot);
    for (const auto& each : OpeningBalancePolicy::eligible(snapshot)) {
        for (const auto& currency : each.currencies)
            editing.openings.push_back({each.account->id, currency});
    }
}

bool isOffered(const EntryEditing& editing, const LedgerSnapshot& snapshot, const std::optional<std::string>& id)
{
    return id && std::ranges::any_of(EntryForm::accounts(editing, snapshot),
                                     [&](const Account* each) { return each->id == *id; });
}

/// The place that comes after the recorded one and can still take an opening balance, beginning anew at the end.
std::optional<EntryOpeningPlace> nextOpening(const EntryEditing& recorded, const std::vector<EntryOpeningPlace>& left)
{
    const EntryOpeningPlace last{recorded.draft.target.value_or(std::string{}), recorded.draft.currency};
    auto places = recorded.openings;
    const auto found = std::ranges::find(places, last);
    if (found != places.end())
        std::ranges::rotate(places, found);
    for (const auto& place : places) {
        if (place != last && std::ranges::find(left, place) != left.end())
            return place;
    }
    return std::nullopt;
}

/// Clears a destination that is not offered any more.
void keepOfferedTarget(EntryEditing& editing, const LedgerSnapshot& snapshot)
{
    auto& draft = editing.draft;
    if (!draft.hasDestination() || !draft.target)
        return;
    const auto kept = EntryRules::retainedTarget(draft.target, EntryRules::destinations(snapshot, draft));
    editing.targetNeedsSelection = !kept;
    draft.target = kept;
    if (kept)
        return;
    EntryMessages::forget(editing, EntryField::destination);
    editing.problems.push_back(
        {EntryField::destination, EntryValidationError{EntryValidationError::DestinationRequired{}}});
}

void setCurrency(EntryEditing& editing, const std::string& currency)
{
    auto& draft = editing.draft;
    if (draft.currency == currency)
        return;
    if (!draft.amount.empty()) {
        editing.sourceCurrencyReset = true;
        draft.amount.clear();
    }
    draft.currency = currency;
    draft.originalIncomeID.reset();
    EntryMessages::forget(editing, EntryField::amount);
}

void clearTargetAmount(EntryEditing& editing)
{
    EntryMessages::forget(editing, EntryField::targetAmount);
    if (editing.draft.targetAmount.empty())
        return;
    editing.targetCurrencyReset = true;
    editing.draft.targetAmount.clear();
}

/// The currency received stays when the account holds it and it differs from the one sent.
void settleTargetCurrency(EntryEditing& editing, const LedgerSnapshot& snapshot)
{
    auto& draft = editing.draft;
    const auto* const account = draft.target ? snapshot.account(*draft.target) : nullptr;
    if (draft.kind != EntryKind::exchange || !account)
        return;
    const auto fits = [&](const std::string& code) { return code != draft.currency; };
    if (account->holds(draft.targetCurrency) && fits(draft.targetCurrency))
        return;
    const auto found = std::ranges::find_if(account->currencies, fits);
    draft.targetCurrency = found == account->currencies.end() ? std::string{} : *found;
    clearTargetAmount(editing);
}

void dropWhatTheKindHasNoPlaceFor(TransactionDraft& draft)
{
    if (!draft.hasDestination() && !draft.onlyArrives())
        draft.target.reset();
    if (draft.onlyArrives())
        draft.source.reset();
    if (draft.kind != EntryKind::exchange) {
        draft.targetCurrency.clear();
        draft.targetAmount.clear();
    }
    if (draft.kind != EntryKind::refund) {
        draft.originalIncomeID.reset();
        draft.refundReference.clear();
    }
}

void setAccount(EntryEditing& editing, const std::optional<std::string>& id, const LedgerSnapshot& snapshot,
                const std::optional<std::string>& preferredCurrency = {})
{
    editing.draft.primaryAccount() = id;
    const auto* const account = id ? snapshot.account(*id) : nullptr;
    if (!account)
        return;
    const auto offered = EntryForm::currencies(editing, *account);
    const auto isOffer = [&](const std::string& code) { return std::ranges::find(offered, code) != offered.end(); };
    if (offered.empty() || isOffer(editing.draft.currency))
        return;
    const bool prefers = preferredCurrency && isOffer(*preferredCurrency);
    setCurrency(editing, prefers ? *preferredCurrency : offered.front());
}

}

EntryEditing EntryEdits::opened(const EntryForm::Opening& opening, const LedgerSnapshot& snapshot,
                                std::string idempotencyKey)
{
    EntryEditing editing;
    if (opening.prefilled)
        editing.draft = *opening.prefilled;
    editing.draft.kind = opening.kind;
    if (editing.draft.idempotencyKey.empty())
        editing.draft.idempotencyKey = std::move(idempotencyKey);
    if (opening.prefilled)
        return refreshed(std::move(editing), snapshot);
    findOpenings(editing, snapshot);
    const auto last = lastUse(snapshot, opening.kind);
    const auto offered = EntryForm::accounts(editing, snapshot);
    // Nobody records a second opening where the first one is: the last place tells nothing about the next.
    const bool hasLast = opening.kind != EntryKind::opening;
    const auto account = EntryRules::initialAccountID(opening.accountID, hasLast ? last.accountID : std::nullopt,
                                                      hasLast ? last.currency : std::nullopt, offered);
    setAccount(editing, account, snapshot, account == last.accountID ? last.currency : std::nullopt);
    return editing;
}

EntryEditing EntryEdits::withKind(EntryEditing editing, std::string_view kind, const LedgerSnapshot& snapshot)
{
    if (editing.draft.kind == kind)
        return editing;
    const auto account = editing.draft.primaryAccount();
    editing.draft.kind = kind;
    editing.draft.categoryID.reset();
    editing.draft.target.reset();
    editing.draft.source.reset();
    dropWhatTheKindHasNoPlaceFor(editing.draft);
    editing.problems.clear();
    editing.refusedPastes.clear();
    editing.targetNeedsSelection = false;
    editing.sourceCurrencyReset = false;
    editing.targetCurrencyReset = false;
    findOpenings(editing, snapshot);
    setAccount(editing, isOffered(editing, snapshot, account) ? account : std::nullopt, snapshot);
    return editing;
}

EntryEditing EntryEdits::withAccount(EntryEditing editing, const std::string& accountID, const LedgerSnapshot& snapshot)
{
    EntryMessages::forgetWith(editing, EntryField::account);
    setAccount(editing, accountID, snapshot);
    keepOfferedTarget(editing, snapshot);
    settleTargetCurrency(editing, snapshot);
    return editing;
}

EntryEditing EntryEdits::withCurrency(EntryEditing editing, const std::string& currency, const LedgerSnapshot& snapshot)
{
    EntryMessages::forgetWith(editing, EntryField::account);
    setCurrency(editing, currency);
    keepOfferedTarget(editing, snapshot);
    settleTargetCurrency(editing, snapshot);
    return editing;
}

EntryEditing EntryEdits::withDestination(EntryEditing editing, const std::string& accountID,
                                         const LedgerSnapshot& snapshot)
{
    EntryMessages::forgetWith(editing, EntryField::destination);
    editing.targetNeedsSelection = false;
    editing.draft.target = accountID;
    settleTargetCurrency(editing, snapshot);
    return editing;
}

EntryEditing EntryEdits::withTargetCurrency(EntryEditing editing, const std::string& currency)
{
    auto& draft = editing.draft;
    if (draft.targetCurrency == currency)
        return editing;
    EntryMessages::forgetWith(editing, EntryField::destination);
    clearTargetAmount(editing);
    draft.targetCurrency = currency;
    return editing;
}

EntryEditing EntryEdits::withAmount(EntryEditing editing, std::string text)
{
    EntryMessages::forget(editing, EntryField::amount);
    editing.sourceCurrencyReset = false;
    editing.draft.amount = std::move(text);
    return editing;
}

EntryEditing EntryEdits::withTargetAmount(EntryEditing editing, std::string text)
{
    EntryMessages::forget(editing, EntryField::targetAmount);
    editing.targetCurrencyReset = false;
    editing.draft.targetAmount = std::move(text);
    return editing;
}

EntryEditing EntryEdits::leftAmount(EntryEditing editing, EntryField amount, std::string_view locale)
{
    const bool isTarget = amount == EntryField::targetAmount;
    const auto& text = isTarget ? editing.draft.targetAmount : editing.draft.amount;
    const auto& currency = isTarget ? editing.draft.targetCurrency : editing.draft.currency;
    if (TextFold::trimmed(text).empty() || currency.empty())
        return editing;
    const auto minor = Money::parse(text, currency, locale);
    if (minor && *minor > 0)
        return editing;
    EntryMessages::forget(editing, amount);
    if (minor)
        editing.problems.push_back({amount, EntryValidationError{EntryValidationError::PositiveAmount{}}});
    else
        editing.problems.push_back(EntryProblem::unread(amount, minor.error(), currency));
    return editing;
}

EntryEditing EntryEdits::refusedPaste(EntryEditing editing, EntryField amount, PasteRefusal refusal)
{
    EntryMessages::forget(editing, amount);
    editing.refusedPastes.emplace(amount, refusal);
    return editing;
}

EntryEditing EntryEdits::withDay(EntryEditing editing, std::string day)
{
    EntryMessages::forgetWith(editing, EntryField::date);
    editing.draft.date = std::move(day);
    return editing;
}

EntryEditing EntryEdits::withCategory(EntryEditing editing, const std::string& categoryID)
{
    EntryMessages::forget(editing, EntryField::category);
    editing.draft.categoryID = categoryID;
    return editing;
}

EntryEditing EntryEdits::withNote(EntryEditing editing, std::string note)
{
    EntryMessages::forget(editing, EntryField::note);
    editing.draft.note = std::move(note);
    return editing;
}

EntryEditing EntryEdits::withOriginal(EntryEditing editing, const std::optional<std::string>& incomeID)
{
    EntryMessages::forgetWith(editing, EntryField::original);
    editing.draft.originalIncomeID = incomeID;
    return editing;
}

EntryEditing EntryEdits::withReference(EntryEditing editing, std::string reference)
{
    EntryMessages::forget(editing, EntryField::original);
    editing.draft.refundReference = std::move(reference);
    return editing;
}

EntryEditing EntryEdits::withReceipts(EntryEditing editing, std::vector<std::string> attachmentIDs)
{
    EntryMessages::forget(editing, EntryField::receipts);
    editing.draft.attachments = std::move(attachmentIDs);
    return editing;
}

EntryEditing EntryEdits::refreshed(EntryEditing editing, const LedgerSnapshot& snapshot)
{
    auto& draft = editing.draft;
    EntryMessages::forgetBooks(editing);
    findOpenings(editing, snapshot);
    if (draft.primaryAccount() && !isOffered(editing, snapshot, draft.primaryAccount())) {
        draft.primaryAccount().reset();
        EntryMessages::forget(editing, EntryField::account);
        editing.problems.push_back({EntryField::account, PostingReason::notFound});
    }
    keepOfferedTarget(editing, snapshot);
    if (draft.categoryID) {
        const auto found = std::ranges::find(snapshot.categories, *draft.categoryID, &Category::id);
        if (found == snapshot.categories.end() || found->archived) {
            draft.categoryID.reset();
            EntryMessages::forget(editing, EntryField::category);
            editing.problems.push_back({EntryField::category, PostingReason::notFound});
        }
    }
    return editing;
}

EntryEditing EntryEdits::following(const EntryEditing& recorded, const LedgerSnapshot& snapshot,
                                   std::string idempotencyKey)
{
    const auto& last = recorded.draft;
    EntryEditing next;
    next.draft.kind = last.kind;
    next.draft.date = last.date;
    next.draft.categoryID = last.categoryID;
    next.draft.source = last.source;
    next.draft.target = last.target;
    next.draft.currency = last.currency;
    next.draft.targetCurrency = last.targetCurrency;
    next.draft.idempotencyKey = std::move(idempotencyKey);
    if (last.kind != EntryKind::opening)
        return refreshed(std::move(next), snapshot);
    findOpenings(next, snapshot);
    const auto place = nextOpening(recorded, next.openings);
    next.draft.target = place ? std::optional{place->accountID} : std::nullopt;
    next.draft.currency = place ? place->currency : std::string{};
    return next;
}

EntrySubmission EntryEdits::restored(const KeptEntry& kept, const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto& input = kept.input;
    EntryEditing editing;
    auto& draft = editing.draft;
    draft.kind = input.kind;
    draft.date = input.date;
    draft.note = input.note;
    draft.categoryID = input.categoryID;
    draft.source = input.sourceAccountID;
    draft.target = input.targetAccountID;
    draft.currency = input.currency;
    draft.amount = Money::formatDigits(input.amountMinor, input.currency, locale);
    draft.targetCurrency = input.targetCurrency.value_or(std::string{});
    if (input.targetAmountMinor)
        draft.targetAmount = Money::formatDigits(*input.targetAmountMinor, draft.targetCurrency, locale);
    draft.originalIncomeID = input.originalTransactionID;
    draft.refundReference = input.externalReference.value_or(std::string{});
    draft.attachments = input.attachmentIDs;
    draft.idempotencyKey = input.idempotencyKey;
    if (!kept.outcomeUnknown)
        return EntrySubmission::refused(refreshed(std::move(editing), snapshot), input);
    findOpenings(editing, snapshot);
    // What may have been recorded already is shown as it was sent, also where it could not be recorded again.
    if (draft.kind == EntryKind::opening && draft.target)
        editing.openings.push_back({*draft.target, draft.currency});
    return EntrySubmission::uncertain(std::move(editing), input);
}
