#include "LedgerUI/Presentation/Dividends/DividendForm.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Dividends/DividendAccess.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Records/CapitalQuestion.h"
#include "LedgerUI/Presentation/Records/RecordFormParts.h"

namespace {

namespace Action = DividendAction;
using RecordDrafts::find;

const DividendState& stateOf(const LedgerSnapshot& snapshot)
{
    static const DividendState none;
    return snapshot.dividends ? *snapshot.dividends : none;
}

TypedTexts defaultRatios(const DividendState& state, std::string_view locale)
{
    TypedTexts texts;
    for (const auto& each : state.participants) {
        if (!each.archived)
            texts[each.id] = BasisPoints::text(each.ratioBps, locale);
    }
    return texts;
}

void fillRatios(DividendForm& form, const DividendState& before, std::string_view locale, PreserveDraft preserve)
{
    const auto recorded = defaultRatios(form.captured, locale);
    RecordDrafts::fill(form.ratios, form.newest, recorded, defaultRatios(before, locale), preserve);
    std::erase_if(form.leftOut, [&](const auto& id) { return !recorded.contains(id); });
    for (const auto& each : form.captured.participants) {
        const bool isNew = !find(before.participants, each.id);
        if (preserve == PreserveDraft::yes && isNew && !each.archived && each.ratioBps == 0)
            form.leftOut.insert(each.id);
    }
}

/// Who has no ratio of their own takes no part until somebody says so.
void leaveOutThoseWithoutRatio(DividendForm& form)
{
    form.leftOut.clear();
    for (const auto& each : form.captured.participants) {
        if (!each.archived && each.ratioBps == 0)
            form.leftOut.insert(each.id);
    }
    if (form.leftOut.size() == form.ratios.size())
        form.leftOut.clear();
}

void fillParticipant(DividendForm& form, std::string_view locale)
{
    const auto* known = find(form.captured.participants, form.participantID);
    RecordDrafts::fillPerson(form, known);
    form.ratio = BasisPoints::text(known ? known->ratioBps : 0, locale);
}

/// A participant read anew, without what a person has changed since `before`.
void followParticipant(DividendForm& form, const DividendState& before, const LedgerSnapshot& snapshot,
                       std::string_view locale)
{
    const auto* was = find(before.participants, form.participantID);
    const auto* is = find(form.captured.participants, form.participantID);
    if (!was || !is)
        return;
    RecordDrafts::followPerson(form, *was, *is, snapshot.members);
    const auto now = BasisPoints::text(is->ratioBps, locale);
    RecordDrafts::follow(form, RecordPart::ratio, form.ratio, BasisPoints::text(was->ratioBps, locale), now, now);
}

/// The command as far as it says what is settled.
DividendCommand settlement(const DividendForm& form)
{
    const auto unlessEmpty = [](const std::string& id) { return id.empty() ? std::nullopt : std::optional{id}; };
    DividendCommand command;
    command.action = form.route.action;
    command.batchID = unlessEmpty(form.batchID);
    command.advanceID = unlessEmpty(form.advanceID);
    command.participantID = unlessEmpty(form.participantID);
    return command;
}

/// What there is no choice about, as long as nothing is chosen.
void chooseOnly(DividendForm& form, const LedgerSnapshot& snapshot)
{
    if (DividendForms::usesAdvance(form.route.action) && form.advanceID.empty()) {
        if (const auto advances = DividendForms::eligibleAdvances(form, snapshot); advances.size() == 1)
            form.advanceID = advances.front()->id;
    }
    if (DividendForms::movesMoney(form.route.action))
        RecordFormParts::chooseOnly(form.accountID, DividendAccess::accounts(snapshot, form.currency));
}

/// The most that could be settled with these records.
std::optional<std::int64_t> limitIn(const DividendState& state, const DividendForm& form,
                                    const LedgerSnapshot& snapshot)
{
    const auto now = DividendContext::of(snapshot);
    return DividendRules::limit(
        settlement(form), {.state = state, .member = now.member, .members = now.members, .accounts = now.accounts});
}

/// While a person lets the whole rest stand, it is the rest of now, and of what is chosen now. `was` is what it was
/// before; nothing while it could not be told.
void followRest(DividendForm& form, std::optional<std::int64_t> was, const LedgerSnapshot& snapshot,
                std::string_view locale)
{
    if (!DividendForms::settlesLine(form.route.action))
        return;
    const auto rest = DividendForms::limit(form, snapshot);
    const bool stands = was ? form.amount == Money::formatDigits(*was, form.currency, locale) : form.amount.empty();
    if (stands && rest && *rest > 0)
        form.amount = Money::formatDigits(*rest, form.currency, locale);
}

/// The currencies in which dividends can be paid.
std::vector<std::string> payable(const LedgerSnapshot& snapshot)
{
    return RecordFormParts::currenciesOf(DividendAccess::accounts(snapshot, std::nullopt));
}

/// The one that was wanted while it can be paid in, else the first that can.
void chooseCurrency(DividendForm& form, const LedgerSnapshot& snapshot)
{
    const auto offered = payable(snapshot);
    if (!offered.empty())
        form.currency = CapitalCurrencies::chosen(offered, form.currency);
}

/// Nothing takes its place: the amount was meant in it.
void dropCurrencyUnlessPayable(DividendForm& form, const LedgerSnapshot& snapshot)
{
    const auto offered = payable(snapshot);
    if (std::ranges::find(offered, form.currency) == offered.end())
        form.currency.clear();
}

}

bool DividendForms::settlesLine(std::string_view action)
{
    return action == Action::pay || action == Action::apply;
}

bool DividendForms::usesAdvance(std::string_view action)
{
    return action == Action::apply || action == Action::returnAdvance;
}

bool DividendForms::movesMoney(std::string_view action)
{
    return action == Action::pay || action == Action::advance || action == Action::returnAdvance;
}

DividendForm DividendForms::initialize(DividendForm form, const LedgerSnapshot& snapshot, std::string_view locale,
                                       PreserveDraft preserveDraft)
{
    const auto before = std::exchange(form.captured, stateOf(snapshot));
    const bool isFirst = !form.initialized;
    if (isFirst) {
        form.participantID = form.route.participantID;
        form.batchID = form.route.batchID;
        form.advanceID = form.route.advanceID;
        form.currency = form.route.currency;
        if (const auto* advance = find(form.captured.movements, form.advanceID))
            form.participantID = advance->participantID;
        if (form.route.action == Action::advance)
            chooseCurrency(form, snapshot);
    } else if (form.route.action == Action::advance) {
        dropCurrencyUnlessPayable(form, snapshot);
    }
    const bool keeps = preserveDraft == PreserveDraft::yes;
    if (form.route.action == Action::setParticipant && (isFirst || !keeps))
        fillParticipant(form, locale);
    else if (form.route.action == Action::setParticipant)
        followParticipant(form, before, snapshot, locale);
    if (form.route.action == Action::allocate) {
        fillRatios(form, before, locale, preserveDraft);
        if (isFirst || !keeps)
            leaveOutThoseWithoutRatio(form);
    }
    form = reconcileSelections(std::move(form), snapshot);
    if (isFirst)
        chooseOnly(form, snapshot);
    followRest(form, isFirst ? std::nullopt : limitIn(before, form, snapshot), snapshot, locale);
    form.initialized = true;
    form.needsReload = false;
    form.problems.clear();
    return form;
}

DividendForm DividendForms::opened(const DividendRoute& route, const LedgerSnapshot& snapshot, std::string_view locale)
{
    DividendForm form;
    form.route = route;
    return initialize(std::move(form), snapshot, locale, PreserveDraft::no);
}

DividendForm DividendForms::reloadLatest(DividendForm form, const LedgerSnapshot& snapshot, std::string_view locale)
{
    return initialize(std::move(form), snapshot, locale, PreserveDraft::yes);
}

DividendForm DividendForms::reconcileSelections(DividendForm form, const LedgerSnapshot& snapshot)
{
    const auto& action = form.route.action;
    if (settlesLine(action)) {
        const auto batches = eligibleBatches(form, snapshot);
        if (std::ranges::find(batches, form.batchID, [](const auto* each) { return each->id; }) == batches.end())
            form.batchID.clear();
    }
    if (usesAdvance(action)) {
        const auto advances = eligibleAdvances(form, snapshot);
        if (std::ranges::find(advances, form.advanceID, [](const auto* each) { return each->id; }) == advances.end())
            form.advanceID.clear();
    }
    if (action == Action::advance) {
        const auto* participant = find(stateOf(snapshot).participants, form.participantID);
        if (!participant || participant->archived)
            form.participantID.clear();
    }
    if (movesMoney(action))
        RecordFormParts::dropUnlessOffered(form.accountID, DividendAccess::accounts(snapshot, form.currency));
    return form;
}

DividendForm DividendForms::withDefaultRatios(DividendForm form, const LedgerSnapshot& snapshot,
                                              std::string_view locale)
{
    form.captured = stateOf(snapshot);
    form.ratios = defaultRatios(form.captured, locale);
    form.newest.clear();
    form.problems.clear();
    form.needsReload = false;
    leaveOutThoseWithoutRatio(form);
    return form;
}

bool DividendForms::isCurrent(const DividendForm& form, const LedgerSnapshot& snapshot)
{
    return form.captured == stateOf(snapshot);
}

std::string DividendForms::bookedEntry(const DividendForm& form, const LedgerSnapshot& snapshot)
{
    const auto* made = RecordDrafts::firstSince(form.captured.movements, stateOf(snapshot).movements);
    return made ? made->transactionID.value_or("") : std::string{};
}

std::vector<const DividendBatch*> DividendForms::eligibleBatches(const DividendForm& form,
                                                                 const LedgerSnapshot& snapshot)
{
    std::vector<const DividendBatch*> eligible;
    const auto& state = stateOf(snapshot);
    const auto book = DividendBook::create(state, form.currency, std::nullopt);
    for (const auto& batch : state.batches) {
        if (book && batch.currency == form.currency && !batch.cancelled &&
            book->line(batch.id, form.participantID).unpaidMinor > 0)
            eligible.push_back(&batch);
    }
    return eligible;
}

std::vector<const DividendMovement*> DividendForms::eligibleAdvances(const DividendForm& form,
                                                                     const LedgerSnapshot& snapshot)
{
    std::vector<const DividendMovement*> eligible;
    const auto& state = stateOf(snapshot);
    const auto book = DividendBook::create(state, form.currency, std::nullopt);
    for (const auto& each : state.movements) {
        if (book && each.kind == DividendMovementKind::advance && each.currency == form.currency &&
            each.participantID == form.participantID && book->advanceRemaining(each.id) > 0)
            eligible.push_back(&each);
    }
    return eligible;
}

std::optional<std::int64_t> DividendForms::limit(const DividendForm& form, const LedgerSnapshot& snapshot)
{
    return DividendRules::limit(settlement(form), DividendContext::of(snapshot));
}

std::optional<std::int64_t> DividendForms::capturedLimit(const DividendForm& form, const LedgerSnapshot& snapshot)
{
    return limitIn(form.captured, form, snapshot);
}

DividendForm DividendForms::edited(DividendForm form, const RecordEdit& edit, const LedgerSnapshot& snapshot,
                                   std::string_view locale)
{
    form.problems.clear();
    if (RecordDrafts::take(form, edit))
        return reconcileSelections(std::move(form), snapshot);
    switch (edit.part) {
    case RecordPart::person:
        form.participantID = edit.text;
        form.newestParts.clear();
        if (form.route.action == Action::setParticipant)
            fillParticipant(form, locale);
        break;
    case RecordPart::ratio:
        form.ratio = edit.text;
        break;
    case RecordPart::period:
        form.period = edit.text;
        break;
    case RecordPart::currency:
        if (form.currency == edit.text)
            break;
        form.currency = edit.text;
        form.amountDropped = form.amountDropped || !form.amount.empty();
        form.amount.clear();
        form = reconcileSelections(std::move(form), snapshot);
        chooseOnly(form, snapshot);
        return form;
    case RecordPart::batch:
    case RecordPart::advance: {
        const auto was = limit(form, snapshot);
        (edit.part == RecordPart::batch ? form.batchID : form.advanceID) = edit.text;
        followRest(form, was, snapshot, locale);
        break;
    }
    case RecordPart::amount:
        form.amount = edit.text;
        form.amountDropped = false;
        break;
    case RecordPart::people:
        form.ratios[edit.personID] = edit.text;
        form.newest.erase(edit.personID);
        break;
    case RecordPart::zero: // in this form: whether a person takes part
        if (edit.isOn)
            form.leftOut.erase(edit.personID);
        else
            form.leftOut.insert(edit.personID);
        break;
    default:
        break;
    }
    return reconcileSelections(std::move(form), snapshot);
}

DividendForm DividendForms::rewritten(DividendForm form, std::string_view fromLocale, std::string_view toLocale)
{
    for (auto* text : {&form.amount, &form.ratio})
        *text = EntryForm::rewritten(std::move(*text), fromLocale, toLocale);
    for (auto* texts : {&form.ratios, &form.newest})
        RecordDrafts::rewrite(*texts, fromLocale, toLocale);
    if (const auto ratio = form.newestParts.find(RecordPart::ratio); ratio != form.newestParts.end())
        ratio->second = EntryForm::rewritten(std::move(ratio->second), fromLocale, toLocale);
    return form;
}
