#include <algorithm>
#include <cstdlib>

#include <QStringList>

#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Dividends/DividendAccess.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Dividends/OwnershipRatios.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Dividends/DividendBoard.h"
#include "LedgerUI/Presentation/Dividends/DividendForm.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Records/RecordGround.h"
#include "LedgerUI/Presentation/Records/RecordText.h"

namespace {

namespace Action = DividendAction;
namespace Parts = RecordFormParts;

using Ground = RecordGround<DividendForm>;

std::optional<DividendBook> bookOf(const Ground& ground)
{
    auto made = DividendBook::create(ground.form.captured, ground.form.currency, std::nullopt);
    return made ? std::optional{*std::move(made)} : std::nullopt;
}

RecordField batchField(const Ground& ground)
{
    std::vector<RecordChoice> choices;
    const auto book = bookOf(ground);
    for (const auto* batch : DividendForms::eligibleBatches(ground.form, ground.snapshot)) {
        const auto unpaid = book ? book->line(batch->id, ground.form.participantID).unpaidMinor : 0;
        choices.push_back(
            {batch->id, ground.word("batch.choice", {qString(batch->period), ground.money(unpaid, batch->currency)})});
    }
    // A command that was sent may have settled what it names.
    const auto* chosen = RecordDrafts::find(ground.form.captured.batches, ground.form.batchID);
    if (chosen && !RecordDrafts::find(choices, chosen->id))
        choices.push_back({chosen->id, qString(chosen->period)});
    return Parts::choice(RecordPart::batch, ground.word("batch"), std::move(choices), ground.form.batchID,
                         ground.word("batch.choose"));
}

RecordField advanceField(const Ground& ground)
{
    std::vector<RecordChoice> choices;
    const auto book = bookOf(ground);
    for (const auto* each : DividendForms::eligibleAdvances(ground.form, ground.snapshot)) {
        const auto left = book ? book->advanceRemaining(each->id) : 0;
        choices.push_back(
            {each->id, ground.word("advance.choice", {ground.day(each->date), ground.money(left, each->currency)})});
    }
    const auto* chosen = RecordDrafts::find(ground.form.captured.movements, ground.form.advanceID);
    if (chosen && !RecordDrafts::find(choices, chosen->id))
        choices.push_back({chosen->id, ground.day(chosen->date)});
    return Parts::choice(RecordPart::advance, ground.word("advance"), std::move(choices), ground.form.advanceID,
                         ground.word("advance.choose"));
}

RecordField accountField(std::string_view label, const Ground& ground)
{
    auto field = Parts::account(ground.word(label), ground.word("account.choose"),
                                DividendAccess::accounts(ground.snapshot, ground.form.currency), ground.form.currency,
                                ground.form.accountID, ground.locale);
    if (field.accounts.empty())
        field.message = ground.word("account.nonePays");
    return field;
}

/// Whether the rest of the advance, not that of the line, is what the amount may come to.
bool isBoundByAdvance(const Ground& ground, std::int64_t most)
{
    const auto& form = ground.form;
    if (form.route.action != Action::apply)
        return form.route.action == Action::returnAdvance;
    const auto book = bookOf(ground);
    return book && book->line(form.batchID, form.participantID).unpaidMinor > most;
}

/// The amount, with its limit as soon as it is typed past it.
RecordField amountField(const Ground& ground)
{
    const auto& form = ground.form;
    auto field =
        Parts::half(Parts::amount(ground.word("amount.in", {qString(form.currency)}), form.amount, form.currency));
    const auto most = DividendForms::capturedLimit(form, ground.snapshot);
    const auto typed = Money::parse(form.amount, form.currency, ground.locale);
    if (most && typed && *typed > *most)
        field.message = ground.word(isBoundByAdvance(ground, *most) ? "limit.advance" : "limit.payable",
                                    {ground.money(*most, form.currency)});
    return field;
}

RecordField noteField(const Ground& ground)
{
    return Parts::half(Parts::text(RecordPart::note, ground.word("note.optional"), ground.form.note));
}

void fillSettlement(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    const auto& action = form.route.action;
    // Half a row is too narrow for an allocation with what is unpaid of it.
    content.fields.push_back(
        Parts::fixed(RecordPart::person, ground.word("participant"), ground.nameOf(form.participantID)));
    if (action != Action::returnAdvance) {
        content.equation = DividendBoards::equation(form.captured, form.batchID, form.participantID, ground.locale);
        content.fields.push_back(batchField(ground));
    } else {
        content.equation = DividendBoards::equationOfAdvance(form.captured, form.advanceID, ground.locale);
    }
    if (action != Action::pay)
        content.fields.push_back(advanceField(ground));
    if (action != Action::apply)
        content.fields.push_back(accountField(action == Action::pay ? "account.payFrom" : "account.returnTo", ground));
    content.fields.push_back(amountField(ground));
    content.fields.push_back(noteField(ground));
    if (action == Action::apply)
        content.hint = ground.word("offset.hint");
}

void fillAdvance(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    const auto all = DividendAccess::accounts(ground.snapshot, std::nullopt);
    content.explanation = ground.word("advance.hint");
    content.fields = {
        Parts::half(Parts::choice(RecordPart::person, ground.word("participant"), RecordContents::peopleOnOffer(ground),
                                  form.participantID, ground.word("participant.choose"))),
        Parts::half(Parts::currency(ground.word("currency"), Parts::currenciesOf(all), form.currency, ground.locale)),
        accountField("account.payFrom", ground), amountField(ground), noteField(ground)};
}

/// What the rounding down of a person's part left over, and came to that person.
QString remainderOf(const DividendLine& line, std::int64_t total, const Ground& ground)
{
    const auto whole = total / BasisPoints::whole * line.ratioBps;
    const auto rest = total % BasisPoints::whole * line.ratioBps / BasisPoints::whole;
    const auto more = line.amountMinor - whole - rest;
    return more == 0
               ? QString{}
               : ground.word("remainder", {qString(Money::formatDigits(more, ground.form.currency, ground.locale))});
}

RecordLines allocationLines(const Ground& ground)
{
    const auto& form = ground.form;
    RecordLines table{.personHead = ground.word("participant"),
                      .typedHead = ground.word("ratio.percent"),
                      .amountHead = ground.word("amount.in", {qString(form.currency)})};
    const auto preview = DividendForms::preview(form, ground.locale);
    const auto total = Money::parse(form.amount, form.currency, ground.locale);
    for (const auto* each : DividendForms::people(form)) {
        RecordLine line{.id = each->id,
                        .name = qString(each->name),
                        .isIn = !form.leftOut.contains(each->id),
                        .typed = ground.typedFor(form.ratios, each->id),
                        .mark = ground.newestFor(each->id),
                        .amount = QStringLiteral("–")};
        if (preview) {
            const auto made = std::ranges::find(*preview, each->id, &DividendLine::participantID);
            if (made != preview->end()) {
                line.amount = qString(Money::formatDigits(made->amountMinor, form.currency, ground.locale));
                line.mark = line.mark.isEmpty() ? remainderOf(*made, total.value_or(0), ground) : line.mark;
            }
        }
        table.lines.push_back(std::move(line));
    }
    const auto ratios = DividendForms::ratioTotal(form, ground.locale);
    table.total = RecordText::percent(ratios, ground.locale);
    table.isWhole = ratios == BasisPoints::whole;
    table.amountTotal =
        preview ? qString(Money::formatDigits(*total, form.currency, ground.locale)) : QStringLiteral("–");
    if (!table.isWhole)
        table.message = refusalText(DividendRefusal::sharesIncomplete, ground.locale) + QLatin1Char{' '} +
                        ground.word(ratios > BasisPoints::whole ? "ownership.tooMuch" : "ownership.tooLittle",
                                    {RecordText::percent(std::abs(ratios - BasisPoints::whole), ground.locale)});
    return table;
}

void fillAllocation(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    std::vector<std::string> codes;
    for (const auto& each : CurrencyInfo::supported())
        codes.push_back(each.code);
    content.fields = {Parts::text(RecordPart::period, ground.word("period"), form.period),
                      Parts::half(Parts::currency(ground.word("currency"), codes, form.currency, ground.locale)),
                      Parts::half(Parts::amount(ground.word("allocate.total"), form.amount, form.currency))};
    content.lines = allocationLines(ground);
    if (!content.lines->isWhole)
        content.whyNotConfirm = content.lines->message;
    content.hint = ground.word("allocate.hint");
    if (content.lines->lines.size() < 2)
        content.explanation = ground.word("allocate.single");
}

void fillPlain(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    const auto& route = form.route;
    content.explanation = ground.word("hint.dividend." + route.action);
    const auto batch = std::ranges::find(form.captured.batches, route.batchID, &DividendBatch::id);
    const auto movement = std::ranges::find(form.captured.movements, route.movementID, &DividendMovement::id);
    if (batch != form.captured.batches.end())
        content.fields.push_back(Parts::fixed(
            RecordPart::batch, ground.word("batch"),
            ground.word("batch.of", {qString(batch->period), ground.money(batch->amountMinor, batch->currency)})));
    if (movement != form.captured.movements.end())
        content.fields.push_back(Parts::fixed(
            RecordPart::person, ground.word("movement"),
            ground.word("contribution.of", {ground.money(movement->amountMinor, movement->currency),
                                            ground.nameOf(movement->participantID), ground.day(movement->date)})));
    if (route.action != Action::fillFromOwnership)
        content.fields.push_back(Parts::text(RecordPart::note, ground.word("reason.optional"), form.note));
}

void fill(RecordFormContent& content, const Ground& ground)
{
    const auto& action = ground.form.route.action;
    if (action == Action::allocate)
        fillAllocation(content, ground);
    else if (action == Action::advance)
        fillAdvance(content, ground);
    else if (action == Action::pay || action == Action::apply || action == Action::returnAdvance)
        fillSettlement(content, ground);
    else if (action == Action::setParticipant)
        RecordContents::fillPerson(
            content, ground, "participant",
            {Parts::half(Parts::text(RecordPart::ratio, ground.word("ratio.default"), ground.form.ratio))});
    else
        fillPlain(content, ground);
    content.title = ground.word("title.dividend." + action);
    content.confirm = ground.word("confirm.dividend." + action);
}

/// What the reversal of a movement moves back.
QString previewOfReversal(const DividendMovement& original, const Ground& ground)
{
    const auto money = ground.money(original.amountMinor, original.currency);
    if (!original.transactionID)
        return ground.word("preview.undoApply", {money, ground.nameOf(original.participantID)});
    const bool cameIn = original.kind == DividendMovementKind::returning;
    return ground.word(cameIn ? "preview.takeBack" : "preview.putBack",
                       {money, ground.accountMovedBy(*original.transactionID)});
}

/// The ratios as they stand afterwards, also of those who have none any more.
QString previewOfFilling(std::string_view day, const Ground& ground)
{
    const auto& capital = ground.snapshot.capital;
    if (!capital)
        return {};
    const auto* shares = CapitalMath::ownershipInForce(*capital, day);
    if (!shares)
        return {};
    const auto& known = ground.form.captured.participants;
    const auto changed = OwnershipRatios::changed(*shares, capital->participants, known);
    QStringList ratios;
    for (const auto& each : known) {
        const auto* after = RecordDrafts::find(changed, each.id);
        if (after || (!each.archived && each.ratioBps != 0))
            ratios << qString(each.name) + QLatin1Char{' '} +
                          RecordText::percent(after ? after->ratioBps : each.ratioBps, ground.locale);
    }
    for (const auto& each : changed) {
        if (each.id.empty())
            ratios << ground.word("preview.fill.new",
                                  {qString(each.name), RecordText::percent(each.ratioBps, ground.locale)});
    }
    return ground.word("preview.fillFromOwnership", {ratios.join(QStringLiteral(", "))});
}

QString previewOf(const DividendCommand& command, const Ground& ground)
{
    const auto& action = command.action;
    const auto& captured = ground.form.captured;
    const auto money = ground.money(command.amountMinor.value_or(0), ground.form.currency);
    const auto name = ground.nameOf(ground.form.participantID);
    if (DividendForms::movesMoney(action))
        return ground.word("preview." + action, {money, name, ground.accountName(command.accountID.value_or(""))});
    if (action == Action::apply)
        return ground.word("preview.apply", {money, name});
    if (action == Action::setParticipant)
        return RecordContents::previewOfPerson(command, ground, "participant",
                                               RecordText::percent(command.ratioBps.value_or(0), ground.locale));
    if (action == Action::fillFromOwnership)
        return previewOfFilling(command.date, ground);
    if (action == Action::cancelBatch) {
        const auto* batch = RecordDrafts::find(captured.batches, command.batchID.value_or(""));
        return batch ? ground.word("preview.cancelBatch",
                                   {qString(batch->period), ground.money(batch->amountMinor, batch->currency)})
                     : QString{};
    }
    if (action != Action::reverse)
        return {}; // the table shows what an allocation comes to
    const auto* original = RecordDrafts::find(captured.movements, command.movementID.value_or(""));
    return original ? previewOfReversal(*original, ground) : QString{};
}

/// What is said of newer records: the participants and their ratios are looked at where these stand in the form.
QString changedOf(const Ground& ground)
{
    const auto& action = ground.form.route.action;
    const bool hasRatios =
        action == Action::allocate || action == Action::setParticipant || action == Action::fillFromOwnership;
    return hasRatios ? ground.word("dividend.changed") : refusalText(DividendRefusal::staleRevision, ground.locale);
}

bool keepsDay(std::string_view action)
{
    return action != Action::setParticipant && action != Action::fillFromOwnership;
}

}

RecordFormContent DividendForms::content(const DividendSubmission& submission, const DividendForm& initial,
                                         const LedgerSnapshot& snapshot, std::string_view today,
                                         std::string_view locale)
{
    const auto& form = submission.form();
    const Ground ground{form, snapshot, today, locale};
    RecordFormContent content;
    fill(content, ground);
    auto ready = command(form, snapshot, {std::string{today}, "unsent"}, locale);
    RecordContents::complete<DividendForm, DividendCommand>(
        content, submission, initial, ground,
        {.ready = ready ? std::optional{*std::move(ready)} : std::nullopt,
         .previewOf = previewOf,
         .keepsDay = keepsDay(form.route.action),
         .changed = changedOf(ground)});
    return content;
}
