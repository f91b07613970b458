#include "LedgerUI/Presentation/Capital/DividendForm.h"

#include <algorithm>
#include <utility>

#include <QStringList>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Dividends/DividendAccess.h"
#include "LedgerCore/Domain/Dividends/DividendAllocationCalculator.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Capital/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Capital/RecordFormParts.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

namespace Action = DividendAction;
using DividendForms::PreserveDraft;
using Texts = std::map<std::string, std::string>;

const DividendState& stateOf(const LedgerSnapshot& snapshot)
{
    static const DividendState none;
    return snapshot.dividends ? *snapshot.dividends : none;
}

template <class Record>
const Record* find(const std::vector<Record>& records, std::string_view id)
{
    const auto found = std::ranges::find(records, id, &Record::id);
    return found == records.end() ? nullptr : &*found;
}

Texts defaultRatios(const DividendState& state, std::string_view locale)
{
    Texts texts;
    for (const auto& each : state.participants) {
        if (!each.archived)
            texts[each.id] = BasisPoints::text(each.ratioBps, locale);
    }
    return texts;
}

/// Texts that were typed stay; what newer records say differently is remembered beside them.
void fillRatios(DividendForm& form, const DividendState& before, std::string_view locale, PreserveDraft preserve)
{
    const auto recorded = defaultRatios(form.captured, locale);
    const auto was = defaultRatios(before, locale);
    form.newest.clear();
    for (const auto& [id, text] : recorded) {
        const auto there = form.ratios.find(id);
        const auto old = was.find(id);
        const bool isTyped = preserve == PreserveDraft::yes && there != form.ratios.end() && old != was.end() &&
                             there->second != old->second;
        if (!isTyped)
            form.ratios[id] = text;
        else if (there->second != text)
            form.newest[id] = text;
    }
    std::erase_if(form.ratios, [&](const auto& each) { return !recorded.contains(each.first); });
    std::erase_if(form.leftOut, [&](const auto& id) { return !recorded.contains(id); });
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
    form.name = known ? known->name : std::string{};
    form.memberID = known ? known->memberID : std::nullopt;
    form.ratio = BasisPoints::text(known ? known->ratioBps : 0, locale);
    form.archived = known && known->archived;
}

bool settlesLine(std::string_view action)
{
    return action == Action::pay || action == Action::apply;
}

bool usesAdvance(std::string_view action)
{
    return action == Action::apply || action == Action::returnAdvance;
}

bool movesMoney(std::string_view action)
{
    return action == Action::pay || action == Action::advance || action == Action::returnAdvance;
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

std::optional<RecordPart> partOf(DividendRefusal refusal)
{
    switch (refusal) {
    case DividendRefusal::nameRequired:
        return RecordPart::name;
    case DividendRefusal::participantUnavailable:
        return RecordPart::person;
    case DividendRefusal::memberUnavailable:
        return RecordPart::member;
    case DividendRefusal::ratioInvalid:
        return RecordPart::ratio;
    case DividendRefusal::periodRequired:
        return RecordPart::period;
    case DividendRefusal::currencyUnsupported:
        return RecordPart::currency;
    case DividendRefusal::amountNotPositive:
    case DividendRefusal::amountLimit:
    case DividendRefusal::overpayment:
    case DividendRefusal::overapplication:
        return RecordPart::amount;
    case DividendRefusal::sharesIncomplete:
        return RecordPart::people;
    case DividendRefusal::batchUnavailable:
        return RecordPart::batch;
    case DividendRefusal::advanceUnavailable:
        return RecordPart::advance;
    default:
        return std::nullopt;
    }
}

using Problems = std::vector<DividendProblem>;
using Made = std::expected<DividendCommand, Problems>;

Made checked(const DividendCommands::Built& built)
{
    if (built)
        return *built;
    return std::unexpected(Problems{{.part = partOf(built.error()), .refusal = built.error()}});
}

/// What is missing or cannot be read, before the rules are asked.
Problems missing(const DividendForm& form, const LedgerSnapshot& snapshot, std::string_view locale)
{
    Problems problems;
    const auto& action = form.route.action;
    const auto need = [&](RecordPart part, const std::string& value, DividendRefusal refusal) {
        if (value.empty())
            problems.push_back({.part = part, .refusal = refusal});
    };
    if (action == Action::advance)
        need(RecordPart::person, form.participantID, DividendRefusal::participantUnavailable);
    if (settlesLine(action))
        need(RecordPart::batch, form.batchID, DividendRefusal::batchUnavailable);
    if (usesAdvance(action))
        need(RecordPart::advance, form.advanceID, DividendRefusal::advanceUnavailable);
    if (movesMoney(action))
        need(RecordPart::account, form.accountID, DividendRefusal::noAuthority);
    const auto amount = Money::parse(form.amount, form.currency, locale);
    if (!amount)
        problems.push_back(
            {.part = RecordPart::amount,
             .refusal = form.amount.empty() ? std::optional{DividendRefusal::amountNotPositive} : std::nullopt,
             .money = form.amount.empty() ? std::nullopt : std::optional{amount.error()}});
    if (action != Action::allocate)
        return problems;
    for (const auto* each : DividendForms::people(snapshot)) {
        const auto typed = form.ratios.find(each->id);
        const auto ratio = Money::parse(typed == form.ratios.end() ? std::string{} : typed->second, "CNY", locale);
        if (!ratio && !form.leftOut.contains(each->id))
            problems.push_back({.part = RecordPart::people, .personID = each->id, .money = ratio.error()});
    }
    return problems;
}

Made allocation(const DividendForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    std::vector<DividendCommands::ShareText> texts;
    for (const auto* each : DividendForms::people(snapshot)) {
        const auto typed = form.ratios.find(each->id);
        if (!form.leftOut.contains(each->id) && typed != form.ratios.end())
            texts.push_back({each->id, typed->second});
    }
    return checked(DividendCommands::allocate(DividendContext::of(snapshot), std::move(issue),
                                              {.period = form.period,
                                               .currency = form.currency,
                                               .amount = form.amount,
                                               .shares = std::move(texts),
                                               .note = form.note},
                                              locale));
}

Made settled(const DividendForm& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    const auto context = DividendContext::of(snapshot);
    DividendCommands::Settlement settlement{.batchID = form.batchID,
                                            .participantID = form.participantID,
                                            .advanceID = form.advanceID,
                                            .amount = form.amount,
                                            .accountID = form.accountID,
                                            .note = form.note,
                                            .attachmentIDs = form.receiptIDs};
    if (form.route.action == Action::pay)
        return checked(DividendCommands::pay(context, std::move(issue), std::move(settlement), locale));
    if (form.route.action == Action::apply)
        return checked(DividendCommands::apply(context, std::move(issue), std::move(settlement), locale));
    return checked(DividendCommands::returnAdvance(context, std::move(issue), std::move(settlement), locale));
}

}

QString DividendProblem::message(std::string_view locale) const
{
    if (part == RecordPart::account)
        return RecordFormParts::word("account.choose", locale);
    QStringList sentences;
    if (refusal)
        sentences << refusalText(*refusal, locale);
    if (money)
        sentences << qString(friendlyMessage(*money, locale));
    return sentences.join(QLatin1Char{' '});
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
    }
    const bool keeps = preserveDraft == PreserveDraft::yes;
    if (form.route.action == Action::setParticipant && (isFirst || !keeps))
        fillParticipant(form, locale);
    if (form.route.action == Action::allocate) {
        fillRatios(form, before, locale, preserveDraft);
        if (isFirst || !keeps)
            leaveOutThoseWithoutRatio(form);
    }
    form = reconcileSelections(std::move(form), snapshot);
    if (isFirst && settlesLine(form.route.action) && form.amount.empty()) {
        if (const auto most = limit(form, snapshot); most && *most > 0)
            form.amount = Money::formatDigits(*most, form.currency, locale);
    }
    form.initialized = true;
    form.needsReload = false;
    form.problems.clear();
    return form;
}

DividendForm DividendForms::opened(const DividendRoute& route, const LedgerSnapshot& snapshot, std::string_view locale)
{
    return initialize({.route = route}, snapshot, locale, PreserveDraft::no);
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
        const auto chosen = std::ranges::find(advances, form.advanceID, [](const auto* each) { return each->id; });
        if (chosen == advances.end())
            form.advanceID = advances.size() == 1 ? advances.front()->id : std::string{};
    }
    if (action == Action::advance) {
        const auto* participant = find(stateOf(snapshot).participants, form.participantID);
        if (!participant || participant->archived)
            form.participantID.clear();
    }
    if (movesMoney(action))
        form.accountID = RecordFormParts::keptOrOnly(DividendAccess::accounts(snapshot, form.currency), form.accountID);
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

std::vector<const DividendParticipant*> DividendForms::people(const LedgerSnapshot& snapshot)
{
    std::vector<const DividendParticipant*> offered;
    for (const auto& each : stateOf(snapshot).participants) {
        if (!each.archived)
            offered.push_back(&each);
    }
    return offered;
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

std::optional<std::vector<DividendShare>> DividendForms::shares(const DividendForm& form,
                                                                const LedgerSnapshot& snapshot, std::string_view locale)
{
    std::vector<DividendCommands::ShareText> texts;
    for (const auto* each : people(snapshot)) {
        const auto typed = form.ratios.find(each->id);
        if (!form.leftOut.contains(each->id))
            texts.push_back({each->id, typed == form.ratios.end() ? std::string{} : typed->second});
    }
    return DividendCommands::shares(texts, locale);
}

std::optional<std::vector<DividendLine>> DividendForms::preview(const DividendForm& form,
                                                                const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto total = Money::parse(form.amount, form.currency, locale);
    const auto ratios = shares(form, snapshot, locale);
    if (!total || !ratios || !CurrencyInfo::isSupported(form.currency))
        return std::nullopt;
    auto lines = DividendAllocationCalculator::allocate(*total, *ratios, stateOf(snapshot).participants);
    return lines ? std::optional{*std::move(lines)} : std::nullopt;
}

int DividendForms::ratioTotal(const DividendForm& form, const LedgerSnapshot& snapshot, std::string_view locale)
{
    int total = 0;
    for (const auto* each : people(snapshot)) {
        const auto typed = form.ratios.find(each->id);
        if (!form.leftOut.contains(each->id) && typed != form.ratios.end())
            total += BasisPoints::parse(typed->second, locale).value_or(0);
    }
    return total;
}

DividendForm DividendForms::edited(DividendForm form, const RecordEdit& edit, const LedgerSnapshot& snapshot,
                                   std::string_view locale)
{
    form.problems.clear();
    switch (edit.part) {
    case RecordPart::person:
        form.participantID = edit.text;
        if (form.route.action == Action::setParticipant)
            fillParticipant(form, locale);
        break;
    case RecordPart::name:
        form.name = edit.text;
        break;
    case RecordPart::member:
        form.memberID = edit.text.empty() ? std::nullopt : std::optional{edit.text};
        break;
    case RecordPart::ratio:
        form.ratio = edit.text;
        break;
    case RecordPart::archived:
        form.archived = edit.isOn;
        break;
    case RecordPart::period:
        form.period = edit.text;
        break;
    case RecordPart::currency:
        form.currency = edit.text;
        form.amount.clear();
        break;
    case RecordPart::batch:
        form.batchID = edit.text;
        break;
    case RecordPart::advance:
        form.advanceID = edit.text;
        break;
    case RecordPart::account:
        form.accountID = edit.text;
        break;
    case RecordPart::amount:
        form.amount = edit.text;
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
    case RecordPart::note:
        form.note = edit.text;
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
    for (auto* texts : {&form.ratios, &form.newest}) {
        for (auto& [id, text] : *texts)
            text = EntryForm::rewritten(std::move(text), fromLocale, toLocale);
    }
    return form;
}

std::expected<DividendCommand, std::vector<DividendProblem>> DividendForms::command(const DividendForm& form,
                                                                                    const LedgerSnapshot& snapshot,
                                                                                    CommandIssue issue,
                                                                                    std::string_view locale)
{
    const auto context = DividendContext::of(snapshot);
    const auto& action = form.route.action;
    if (action == Action::fillFromOwnership)
        return checked(DividendCommands::fillFromOwnership(context, std::move(issue)));
    if (action == Action::cancelBatch)
        return checked(DividendCommands::cancelBatch(context, std::move(issue), form.route.batchID, form.note));
    if (action == Action::reverse)
        return checked(DividendCommands::reverse(DividendContext::of(snapshot, form.route.movementID), std::move(issue),
                                                 form.route.movementID, form.note));
    if (action == Action::setParticipant)
        return checked(DividendCommands::setParticipant(
            context, std::move(issue),
            {.id = form.participantID.empty() ? std::nullopt : std::optional{form.participantID},
             .name = form.name,
             .memberID = form.memberID,
             .percentage = form.ratio,
             .archived = form.archived},
            locale));
    if (auto problems = missing(form, snapshot, locale); !problems.empty())
        return std::unexpected(std::move(problems));
    if (action == Action::allocate)
        return allocation(form, snapshot, std::move(issue), locale);
    if (action == Action::advance)
        return checked(DividendCommands::advance(context, std::move(issue),
                                                 {.participantID = form.participantID,
                                                  .currency = form.currency,
                                                  .amount = form.amount,
                                                  .accountID = form.accountID,
                                                  .note = form.note,
                                                  .attachmentIDs = form.receiptIDs},
                                                 locale));
    return settled(form, snapshot, std::move(issue), locale);
}
