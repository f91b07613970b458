#include "LedgerUI/Presentation/Capital/CapitalForm.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Capital/CapitalAccess.h"
#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Records/CapitalQuestion.h"
#include "LedgerUI/Presentation/Records/RecordFormParts.h"

namespace {

namespace Action = CapitalAction;

const CapitalState& stateOf(const LedgerSnapshot& snapshot)
{
    static const CapitalState none;
    return snapshot.capital ? *snapshot.capital : none;
}

/// What the owner had paid in by the baseline in force.
std::int64_t baselineOf(const CapitalBaseline* baseline, std::string_view ownerID)
{
    if (!baseline)
        return 0;
    const auto line = std::ranges::find(baseline->entries, ownerID, &CapitalAmountLine::participantID);
    return line == baseline->entries.end() ? 0 : line->amountMinor;
}

int shareOf(const CapitalOwnershipVersion* version, std::string_view ownerID)
{
    if (!version)
        return 0;
    const auto line = std::ranges::find(version->entries, ownerID, &CapitalOwnershipLine::participantID);
    return line == version->entries.end() ? 0 : line->ownershipBps;
}

/// The rows of the table: everybody who is not archived, and who is archived but stands in the record that is edited.
std::vector<CapitalParticipant> peopleFor(const CapitalForm& form, const CapitalState& state)
{
    const auto* baseline =
        form.route.action == Action::setBaseline ? CapitalMath::currentBaseline(state, form.currency) : nullptr;
    std::vector<CapitalParticipant> people;
    for (const auto& owner : state.participants) {
        if (!owner.archived || baselineOf(baseline, owner.id) != 0)
            people.push_back(owner);
    }
    return people;
}

TypedTexts recordedAmounts(const CapitalForm& form, const CapitalState& state, std::string_view locale)
{
    TypedTexts texts;
    const auto* baseline = CapitalMath::currentBaseline(state, form.currency);
    for (const auto& owner : peopleFor(form, state))
        texts[owner.id] = Money::formatDigits(baselineOf(baseline, owner.id), form.currency, locale);
    return texts;
}

TypedTexts recordedRatios(const CapitalForm& form, const CapitalState& state, std::string_view locale)
{
    TypedTexts texts;
    const auto* version = CapitalMath::ownershipInForce(state, std::nullopt);
    for (const auto& owner : peopleFor(form, state))
        texts[owner.id] = BasisPoints::text(shareOf(version, owner.id), locale);
    return texts;
}

void fillOwner(CapitalForm& form, const CapitalState& state)
{
    RecordDrafts::fillPerson(form, RecordDrafts::find(state.participants, form.participantID));
}

/// An owner read anew, without what a person has changed since `before`.
void followOwner(CapitalForm& form, const CapitalState& before, const LedgerSnapshot& snapshot)
{
    const auto* was = RecordDrafts::find(before.participants, form.participantID);
    const auto* is = RecordDrafts::find(form.captured.participants, form.participantID);
    if (was && is)
        RecordDrafts::followPerson(form, *was, *is, snapshot.members);
}

std::optional<std::string> throughDateOf(const CapitalForm& form, const CapitalState& state)
{
    const auto* baseline = CapitalMath::currentBaseline(state, form.currency);
    return baseline ? std::optional{baseline->throughDate} : std::nullopt;
}

void followThroughDate(CapitalForm& form, const CapitalState& before)
{
    const auto now = throughDateOf(form, form.captured);
    RecordDrafts::follow(form, RecordPart::throughDate, form.historicalDate, throughDateOf(form, before), now,
                         now.value_or(""));
}

/// The currencies in which contributions can be booked.
std::vector<std::string> bookable(const LedgerSnapshot& snapshot)
{
    return RecordFormParts::currenciesOf(CapitalAccess::accounts(snapshot, std::nullopt));
}

/// The amount belongs to whoever is chosen, and waits while nobody is.
void giveAmountTo(CapitalForm& form, const std::string& ownerID)
{
    auto typed = form.amounts.extract(form.participantID);
    form.participantID = ownerID;
    if (typed)
        form.amounts.insert_or_assign(ownerID, std::move(typed.mapped()));
}

/// What is no longer on offer is no longer chosen, and nothing is put in its place: the amount was meant in that
/// currency.
void reconcileContribution(CapitalForm& form, const LedgerSnapshot& snapshot)
{
    const auto currencies = bookable(snapshot);
    if (std::ranges::find(currencies, form.currency) == currencies.end())
        form.currency.clear();
    RecordFormParts::dropUnlessOffered(form.accountID, CapitalAccess::accounts(snapshot, form.currency));
    const auto* owner = RecordDrafts::find(stateOf(snapshot).participants, form.participantID);
    if (!owner || owner->archived)
        giveAmountTo(form, {});
}

void chooseOnlyAccount(CapitalForm& form, const LedgerSnapshot& snapshot)
{
    RecordFormParts::chooseOnly(form.accountID, CapitalAccess::accounts(snapshot, form.currency));
}

void choosePerson(CapitalForm& form, const std::string& id)
{
    if (form.route.action == Action::contribute)
        return giveAmountTo(form, id);
    form.participantID = id;
    form.newestParts.clear();
    fillOwner(form, form.captured);
}

/// Whether any of these amounts is not what the records say.
bool hasTyped(const TypedTexts& amounts, const TypedTexts& recorded)
{
    return std::ranges::any_of(
        amounts, [&](const auto& each) { return each.second != RecordDrafts::typedFor(recorded, each.first); });
}

/// Amounts of another currency mean nothing in this one.
void chooseCurrency(CapitalForm& form, const std::string& code, const LedgerSnapshot& snapshot, std::string_view locale)
{
    if (form.currency == code)
        return;
    const bool isBaseline = form.route.action == Action::setBaseline;
    const auto before = isBaseline ? recordedAmounts(form, form.captured, locale) : TypedTexts{};
    form.amountDropped = form.amountDropped || hasTyped(form.amounts, before);
    form.currency = code;
    form.amounts.clear();
    form.zeroConfirmed = false;
    form.newestParts.clear();
    if (!isBaseline) {
        reconcileContribution(form, snapshot);
        return chooseOnlyAccount(form, snapshot);
    }
    if (const auto* baseline = CapitalMath::currentBaseline(form.captured, code))
        form.historicalDate = baseline->throughDate;
    form.capturedPeople = peopleFor(form, form.captured);
    form.amounts = recordedAmounts(form, form.captured, locale);
    form.newest.clear();
}

}

CapitalForm CapitalForms::initialize(CapitalForm form, const LedgerSnapshot& snapshot, std::string_view today,
                                     std::string_view locale, PreserveDraft preserveDraft)
{
    const auto before = std::exchange(form.captured, stateOf(snapshot));
    const auto& state = form.captured;
    const bool isFirst = !form.initialized;
    const bool keeps = preserveDraft == PreserveDraft::yes;
    if (isFirst) {
        form.participantID = form.route.participantID;
        form.currency = form.route.currency;
        form.startDate = today;
    }
    const bool isAnew = isFirst || !keeps;
    const auto& action = form.route.action;
    if (action == Action::setParticipant && isAnew)
        fillOwner(form, state);
    else if (action == Action::setParticipant)
        followOwner(form, before, snapshot);
    if (action == Action::contribute) {
        if (isAnew)
            form.currency = CapitalCurrencies::chosen(bookable(snapshot), form.currency);
        reconcileContribution(form, snapshot);
        if (isFirst)
            chooseOnlyAccount(form, snapshot);
    }
    form.capturedPeople = peopleFor(form, state);
    if (action == Action::setBaseline) {
        if (isAnew)
            form.historicalDate = throughDateOf(form, state);
        else
            followThroughDate(form, before);
        RecordDrafts::fill(form.amounts, form.newest, recordedAmounts(form, state, locale),
                           recordedAmounts(form, before, locale), preserveDraft);
    }
    if (action == Action::setOwnership)
        RecordDrafts::fill(form.ratios, form.newest, recordedRatios(form, state, locale),
                           recordedRatios(form, before, locale), preserveDraft);
    form.initialized = true;
    form.needsReload = false;
    form.problems.clear();
    return form;
}

CapitalForm CapitalForms::opened(const CapitalRoute& route, const LedgerSnapshot& snapshot, std::string_view today,
                                 std::string_view locale)
{
    CapitalForm form;
    form.route = route;
    return initialize(std::move(form), snapshot, today, locale, PreserveDraft::no);
}

bool CapitalForms::isCurrent(const CapitalForm& form, const LedgerSnapshot& snapshot)
{
    return form.captured == stateOf(snapshot);
}

std::string CapitalForms::bookedEntry(const CapitalForm& form, const LedgerSnapshot& snapshot)
{
    const auto* made = RecordDrafts::firstSince(form.captured.contributions, stateOf(snapshot).contributions);
    return made ? made->transactionID : std::string{};
}

std::int64_t CapitalForms::ratioTotal(const CapitalForm& form, std::string_view locale)
{
    return RecordDrafts::ratioTotal(form.ratios, locale);
}

CapitalForm CapitalForms::edited(CapitalForm form, const RecordEdit& edit, const LedgerSnapshot& snapshot,
                                 std::string_view locale)
{
    form.problems.clear();
    if (RecordDrafts::take(form, edit))
        return form;
    switch (edit.part) {
    case RecordPart::person:
        choosePerson(form, edit.text);
        break;
    case RecordPart::currency:
        chooseCurrency(form, edit.text, snapshot, locale);
        break;
    case RecordPart::amount:
        form.amounts[form.participantID] = edit.text;
        form.amountDropped = false;
        break;
    case RecordPart::throughDate:
        form.historicalDate = edit.text;
        break;
    case RecordPart::startDate:
        form.startDate = edit.text;
        break;
    case RecordPart::people:
        (form.route.action == Action::setOwnership ? form.ratios : form.amounts)[edit.personID] = edit.text;
        form.newest.erase(edit.personID);
        form.amountDropped = false;
        break;
    case RecordPart::zero:
        form.zeroConfirmed = edit.isOn;
        break;
    default:
        break;
    }
    return form;
}

CapitalForm CapitalForms::rewritten(CapitalForm form, std::string_view fromLocale, std::string_view toLocale)
{
    for (auto* texts : {&form.amounts, &form.ratios, &form.newest})
        RecordDrafts::rewrite(*texts, fromLocale, toLocale);
    return form;
}
