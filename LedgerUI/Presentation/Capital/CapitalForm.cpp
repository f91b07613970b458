#include "LedgerUI/Presentation/Capital/CapitalForm.h"

#include <algorithm>
#include <utility>

#include <QStringList>

#include "LedgerCore/Domain/Capital/CapitalAccess.h"
#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Capital/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Capital/RecordFormParts.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

namespace Action = CapitalAction;
using Texts = std::map<std::string, std::string>;

const CapitalState& stateOf(const LedgerSnapshot& snapshot)
{
    static const CapitalState none;
    return snapshot.capital ? *snapshot.capital : none;
}

const CapitalParticipant* find(const CapitalState& state, std::string_view id)
{
    const auto found = std::ranges::find(state.participants, id, &CapitalParticipant::id);
    return found == state.participants.end() ? nullptr : &*found;
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

/// Fills the typed texts from the records; where a draft is kept, what was typed stays and what the records say
/// differently is remembered beside it.
void fillTexts(CapitalForm& form, Texts CapitalForm::* field, const Texts& recorded, const Texts& before,
               CapitalForms::PreserveDraft preserve)
{
    auto& typed = form.*field;
    form.newest.clear();
    for (const auto& [id, text] : recorded) {
        const auto there = typed.find(id);
        const auto was = before.find(id);
        const bool isTyped = preserve == CapitalForms::PreserveDraft::yes && there != typed.end() &&
                             was != before.end() && there->second != was->second;
        if (!isTyped)
            typed[id] = text;
        else if (there->second != text)
            form.newest[id] = text;
    }
    std::erase_if(typed, [&](const auto& each) { return !recorded.contains(each.first); });
}

Texts recordedAmounts(const CapitalForm& form, const CapitalState& state, std::string_view locale)
{
    Texts texts;
    const auto* baseline = CapitalMath::currentBaseline(state, form.currency);
    for (const auto& owner : peopleFor(form, state))
        texts[owner.id] = Money::formatDigits(baselineOf(baseline, owner.id), form.currency, locale);
    return texts;
}

Texts recordedRatios(const CapitalForm& form, const CapitalState& state, std::string_view locale)
{
    Texts texts;
    const auto* version = CapitalMath::ownershipInForce(state, std::nullopt);
    for (const auto& owner : peopleFor(form, state))
        texts[owner.id] = BasisPoints::text(shareOf(version, owner.id), locale);
    return texts;
}

void fillOwner(CapitalForm& form, const CapitalState& state)
{
    const auto* owner = find(state, form.participantID);
    form.name = owner ? owner->name : std::string{};
    form.memberID = owner ? owner->memberID : std::nullopt;
    form.archived = owner && owner->archived;
}

/// The currencies in which contributions can be booked.
std::vector<std::string> bookable(const LedgerSnapshot& snapshot)
{
    return RecordFormParts::currenciesOf(CapitalAccess::accounts(snapshot, std::nullopt));
}

/// What is no longer on offer is no longer chosen.
void reconcileContribution(CapitalForm& form, const LedgerSnapshot& snapshot)
{
    const auto currencies = bookable(snapshot);
    if (std::ranges::find(currencies, form.currency) == currencies.end())
        form.currency = currencies.empty() ? std::string{} : currencies.front();
    const auto accounts = CapitalAccess::accounts(snapshot, form.currency);
    form.accountID = RecordFormParts::keptOrOnly(accounts, form.accountID);
    const auto* owner = find(stateOf(snapshot), form.participantID);
    if (!owner || owner->archived)
        form.participantID.clear();
}

void choosePerson(CapitalForm& form, const std::string& id)
{
    if (form.route.action != Action::contribute) {
        form.participantID = id;
        fillOwner(form, form.captured);
        return;
    }
    // The amount belongs to whoever is chosen.
    auto typed = form.amounts.extract(form.participantID);
    form.participantID = id;
    if (typed)
        form.amounts.insert_or_assign(id, std::move(typed.mapped()));
}

/// Amounts of another currency mean nothing in this one.
void chooseCurrency(CapitalForm& form, const std::string& code, const LedgerSnapshot& snapshot, std::string_view locale)
{
    form.currency = code;
    form.amounts.clear();
    if (form.route.action != Action::setBaseline)
        return reconcileContribution(form, snapshot);
    if (const auto* baseline = CapitalMath::currentBaseline(form.captured, code))
        form.historicalDate = baseline->throughDate;
    form.capturedPeople = peopleFor(form, form.captured);
    form.amounts = recordedAmounts(form, form.captured, locale);
    form.newest.clear();
}

/// Where the message of a refusal stands.
std::optional<RecordPart> partOf(CapitalRefusal refusal)
{
    switch (refusal) {
    case CapitalRefusal::participantUnavailable:
        return RecordPart::person;
    case CapitalRefusal::nameRequired:
        return RecordPart::name;
    case CapitalRefusal::memberUnavailable:
        return RecordPart::member;
    case CapitalRefusal::currencyUnsupported:
        return RecordPart::currency;
    case CapitalRefusal::accountUnavailable:
        return RecordPart::account;
    case CapitalRefusal::amountNotPositive:
    case CapitalRefusal::amountUnreadable:
    case CapitalRefusal::amountLimit:
        return RecordPart::amount;
    case CapitalRefusal::baselineBoundary:
    case CapitalRefusal::baselineOverlap:
        return RecordPart::throughDate;
    case CapitalRefusal::zeroBaselineUnconfirmed:
        return RecordPart::zero;
    case CapitalRefusal::baselineNegative:
    case CapitalRefusal::baselineCoverage:
    case CapitalRefusal::sharesIncomplete:
        return RecordPart::people;
    default:
        return std::nullopt;
    }
}

/// What cannot be read among the typed amounts or percentages, each with its own reason.
std::vector<CapitalProblem> unreadable(const Texts& texts, const std::vector<CapitalParticipant>& people,
                                       std::string_view currency, std::string_view locale)
{
    std::vector<CapitalProblem> problems;
    for (const auto& owner : people) {
        const auto text = texts.find(owner.id);
        const auto amount = Money::parse(text == texts.end() ? std::string{} : text->second, currency, locale);
        if (!amount)
            problems.push_back({.part = RecordPart::people, .personID = owner.id, .money = amount.error()});
        else if (*amount < 0)
            problems.push_back(
                {.part = RecordPart::people, .personID = owner.id, .refusal = CapitalRefusal::baselineNegative});
    }
    return problems;
}

std::vector<CapitalCommands::OwnerText> ownerTexts(const Texts& texts, const std::vector<CapitalParticipant>& people)
{
    std::vector<CapitalCommands::OwnerText> typed;
    for (const auto& owner : people) {
        const auto text = texts.find(owner.id);
        typed.push_back({owner.id, text == texts.end() ? std::string{} : text->second});
    }
    return typed;
}

using Made = std::expected<CapitalCommand, std::vector<CapitalProblem>>;

Made checked(const CapitalCommands::Built& built)
{
    if (built)
        return *built;
    return std::unexpected(std::vector{CapitalProblem{.part = partOf(built.error()), .refusal = built.error()}});
}

Made contribution(const CapitalForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    std::vector<CapitalProblem> problems;
    if (form.participantID.empty())
        problems.push_back({.part = RecordPart::person, .refusal = CapitalRefusal::participantUnavailable});
    if (form.accountID.empty())
        problems.push_back({.part = RecordPart::account, .refusal = CapitalRefusal::accountUnavailable});
    const auto typed = form.amounts.find(form.participantID);
    const auto text = typed == form.amounts.end() ? std::string{} : typed->second;
    const auto amount = Money::parse(text, form.currency, locale);
    if (!amount || *amount < 1)
        problems.push_back({.part = RecordPart::amount,
                            .refusal = CapitalRefusal::amountNotPositive,
                            .money = amount || text.empty() ? std::nullopt : std::optional{amount.error()}});
    if (!problems.empty())
        return std::unexpected(std::move(problems));
    return checked(CapitalCommands::contribute(CapitalContext::of(snapshot), std::move(issue),
                                               {.participantID = form.participantID,
                                                .currency = form.currency,
                                                .amount = text,
                                                .accountID = form.accountID,
                                                .note = form.note,
                                                .attachmentIDs = form.receiptIDs},
                                               locale));
}

Made baseline(const CapitalForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    auto problems = unreadable(form.amounts, form.capturedPeople, form.currency, locale);
    if (!form.historicalDate)
        problems.push_back({.part = RecordPart::throughDate, .refusal = CapitalRefusal::baselineBoundary});
    if (!problems.empty())
        return std::unexpected(std::move(problems));
    return checked(
        CapitalCommands::setBaseline(CapitalContext::of(snapshot), std::move(issue),
                                     {.currency = form.currency,
                                      .throughDate = *form.historicalDate,
                                      .amounts = ownerTexts(form.amounts, form.capturedPeople),
                                      .zero = form.zeroConfirmed ? CapitalCommands::ZeroBaseline::confirmed
                                                                 : CapitalCommands::ZeroBaseline::unconfirmed},
                                     locale));
}

Made ownership(const CapitalForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    auto problems = unreadable(form.ratios, form.capturedPeople, "CNY", locale);
    if (!problems.empty())
        return std::unexpected(std::move(problems));
    issue.date = form.startDate;
    return checked(CapitalCommands::setOwnership(CapitalContext::of(snapshot), std::move(issue),
                                                 ownerTexts(form.ratios, form.capturedPeople), locale));
}

}

QString CapitalProblem::message(std::string_view locale) const
{
    QStringList sentences;
    if (refusal)
        sentences << refusalText(*refusal, locale);
    if (money)
        sentences << qString(friendlyMessage(*money, locale));
    return sentences.join(QLatin1Char{' '});
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
    const auto& action = form.route.action;
    if (action == Action::setParticipant && (isFirst || !keeps))
        fillOwner(form, state);
    if (action == Action::contribute)
        reconcileContribution(form, snapshot);
    form.capturedPeople = peopleFor(form, state);
    if (action == Action::setBaseline) {
        const auto* baseline = CapitalMath::currentBaseline(state, form.currency);
        if (baseline && (isFirst || !keeps))
            form.historicalDate = baseline->throughDate;
        fillTexts(form, &CapitalForm::amounts, recordedAmounts(form, state, locale),
                  recordedAmounts(form, before, locale), preserveDraft);
    }
    if (action == Action::setOwnership)
        fillTexts(form, &CapitalForm::ratios, recordedRatios(form, state, locale), recordedRatios(form, before, locale),
                  preserveDraft);
    form.initialized = true;
    form.needsReload = false;
    form.problems.clear();
    return form;
}

CapitalForm CapitalForms::opened(const CapitalRoute& route, const LedgerSnapshot& snapshot, std::string_view today,
                                 std::string_view locale)
{
    return initialize({.route = route}, snapshot, today, locale, PreserveDraft::no);
}

bool CapitalForms::isCurrent(const CapitalForm& form, const LedgerSnapshot& snapshot)
{
    return form.captured == stateOf(snapshot);
}

int CapitalForms::ratioTotal(const CapitalForm& form, std::string_view locale)
{
    int total = 0;
    for (const auto& [id, text] : form.ratios)
        total += BasisPoints::parse(text, locale).value_or(0);
    return total;
}

CapitalForm CapitalForms::edited(CapitalForm form, const RecordEdit& edit, const LedgerSnapshot& snapshot,
                                 std::string_view locale)
{
    form.problems.clear();
    auto& amounts = form.amounts;
    switch (edit.part) {
    case RecordPart::person:
        choosePerson(form, edit.text);
        break;
    case RecordPart::name:
        form.name = edit.text;
        break;
    case RecordPart::member:
        form.memberID = edit.text.empty() ? std::nullopt : std::optional{edit.text};
        break;
    case RecordPart::archived:
        form.archived = edit.isOn;
        break;
    case RecordPart::currency:
        chooseCurrency(form, edit.text, snapshot, locale);
        break;
    case RecordPart::account:
        form.accountID = edit.text;
        break;
    case RecordPart::amount:
        amounts[form.participantID] = edit.text;
        break;
    case RecordPart::throughDate:
        form.historicalDate = edit.text;
        break;
    case RecordPart::startDate:
        form.startDate = edit.text;
        break;
    case RecordPart::people:
        (form.route.action == Action::setOwnership ? form.ratios : amounts)[edit.personID] = edit.text;
        form.newest.erase(edit.personID);
        break;
    case RecordPart::zero:
        form.zeroConfirmed = edit.isOn;
        break;
    case RecordPart::note:
        form.note = edit.text;
        break;
    default:
        break;
    }
    return form;
}

CapitalForm CapitalForms::rewritten(CapitalForm form, std::string_view fromLocale, std::string_view toLocale)
{
    for (auto* texts : {&form.amounts, &form.ratios, &form.newest}) {
        for (auto& [id, text] : *texts)
            text = EntryForm::rewritten(std::move(text), fromLocale, toLocale);
    }
    return form;
}

std::expected<CapitalCommand, std::vector<CapitalProblem>> CapitalForms::command(const CapitalForm& form,
                                                                                 const LedgerSnapshot& snapshot,
                                                                                 CommandIssue issue,
                                                                                 std::string_view locale)
{
    const auto& action = form.route.action;
    if (action == Action::contribute)
        return contribution(form, snapshot, std::move(issue), locale);
    if (action == Action::setBaseline)
        return baseline(form, snapshot, std::move(issue), locale);
    if (action == Action::setOwnership)
        return ownership(form, snapshot, std::move(issue), locale);
    if (action == Action::reverse)
        return checked(CapitalCommands::reverse(CapitalContext::of(snapshot, form.route.contributionID),
                                                std::move(issue), form.route.contributionID, form.note));
    return checked(CapitalCommands::setParticipant(
        CapitalContext::of(snapshot), std::move(issue),
        {.id = form.participantID.empty() ? std::nullopt : std::optional{form.participantID},
         .name = form.name,
         .memberID = form.memberID,
         .archived = form.archived}));
}
