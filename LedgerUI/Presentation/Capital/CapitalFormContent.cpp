#include <algorithm>

#include <QStringList>

#include "LedgerCore/Domain/Capital/CapitalAccess.h"
#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Capital/CapitalForm.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Records/RecordGround.h"
#include "LedgerUI/Presentation/Records/RecordText.h"

namespace {

namespace Action = CapitalAction;
namespace Parts = RecordFormParts;

using Ground = RecordGround<CapitalForm>;

/// The place among all owners, by which colours are chosen.
std::size_t placeOf(std::string_view ownerID, const Ground& ground)
{
    const auto& all = ground.form.captured.participants;
    return static_cast<std::size_t>(std::ranges::find(all, ownerID, &CapitalParticipant::id) - all.begin());
}

void fillContribution(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    const auto all = CapitalAccess::accounts(ground.snapshot, std::nullopt);
    const auto offered = CapitalAccess::accounts(ground.snapshot, form.currency);
    content.explanation = ground.word("contribute.hint");
    content.fields = {
        Parts::half(Parts::choice(RecordPart::person, ground.word("owner"), RecordContents::peopleOnOffer(ground),
                                  form.participantID, ground.word("owner.choose"))),
        Parts::half(Parts::currency(ground.word("currency"), Parts::currenciesOf(all), form.currency, ground.locale)),
        Parts::account(ground.word("account.received"), ground.word("account.choose"), offered, form.currency,
                       form.accountID, ground.locale),
        Parts::half(Parts::amount(ground.word("amount.in", {qString(form.currency)}),
                                  RecordDrafts::typedFor(form.amounts, form.participantID), form.currency)),
        Parts::half(Parts::text(RecordPart::note, ground.word("note.optional"), form.note))};
}

void fillReversal(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    const auto& all = form.captured.contributions;
    const auto original = std::ranges::find(all, form.route.contributionID, &CapitalContribution::id);
    content.explanation = ground.word("reverseContribution.hint");
    if (original != all.end())
        content.fields.push_back(Parts::fixed(
            RecordPart::person, ground.word("contribution"),
            ground.word("contribution.of", {ground.money(original->amountMinor, original->currency),
                                            qString(original->participantName), ground.day(original->date)})));
    content.fields.push_back(Parts::text(RecordPart::note, ground.word("reason.optional"), form.note));
}

QString besideOf(const CapitalParticipant& owner, const Ground& ground)
{
    if (const auto newest = ground.newestFor(owner.id); !newest.isEmpty())
        return newest;
    const auto& members = ground.snapshot.members;
    const auto member =
        std::ranges::find_if(members, [&](const Member& each) { return owner.memberID && each.id == *owner.memberID; });
    return member == members.end() ? ground.word("member.none") : qString(member->name);
}

RecordLines linesOf(const TypedTexts& texts, const Ground& ground)
{
    RecordLines table{.personHead = ground.word("owner"), .besideHead = ground.word("member")};
    for (const auto& owner : ground.form.capturedPeople) {
        table.lines.push_back({.id = owner.id,
                               .name = qString(owner.name),
                               .beside = besideOf(owner, ground),
                               .swatch = placeOf(owner.id, ground),
                               .typed = ground.typedFor(texts, owner.id)});
    }
    return table;
}

void fillBaseline(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    std::vector<std::string> codes;
    for (const auto& each : CurrencyInfo::supported())
        codes.push_back(each.code);
    content.explanation = ground.word("baseline.hint");
    content.fields = {Parts::half(Parts::currency(ground.word("currency"), codes, form.currency, ground.locale)),
                      Parts::half(Parts::day(
                          RecordPart::throughDate, ground.word("baseline.through"), form.historicalDate.value_or(""),
                          {.earliest = {}, .latest = std::string{ground.today}, .today = std::string{ground.today}},
                          ground.word("day.choose"), ground.locale))};
    auto lines = linesOf(form.amounts, ground);
    lines.currency = form.currency;
    lines.typedHead = ground.word("amount.in", {qString(form.currency)});
    std::optional<std::int64_t> sum = 0;
    for (const auto& owner : form.capturedPeople) {
        const auto amount = Money::parse(RecordDrafts::typedFor(form.amounts, owner.id), form.currency, ground.locale);
        sum = sum && amount ? Money::add(*sum, *amount) : std::nullopt;
    }
    lines.total = sum ? qString(Money::formatDigits(*sum, form.currency, ground.locale)) : QStringLiteral("–");
    content.lines = std::move(lines);
    if (sum == 0)
        content.fields.push_back(Parts::tick(RecordPart::zero, ground.word("baseline.zero"), form.zeroConfirmed));
    if (const auto* current = CapitalMath::currentBaseline(form.captured, form.currency))
        content.hint = ground.word("baseline.supersedes", {ground.day(current->throughDate)});
}

void fillOwnership(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    content.explanation = ground.word("ownership.hint");
    // An agreement may hold from before the last payment or from a later year on.
    const auto latest = CapitalRules::latestOwnershipDay(ground.today);
    content.fields = {Parts::day(RecordPart::startDate, ground.word("ownership.from"), form.startDate,
                                 {.earliest = {}, .latest = latest, .today = std::string{ground.today}},
                                 ground.word("day.choose"), ground.locale)};
    auto lines = linesOf(form.ratios, ground);
    lines.typedHead = ground.word("ownership.percent");
    const auto total = CapitalForms::ratioTotal(form, ground.locale);
    const auto off = total - BasisPoints::whole;
    lines.total = RecordText::percent(total, ground.locale);
    lines.isWhole = off == 0;
    if (off != 0) {
        lines.message = ground.word(off > 0 ? "ownership.tooMuch" : "ownership.tooLittle",
                                    {RecordText::percent(std::abs(off), ground.locale)});
        content.whyNotConfirm = lines.message;
    }
    content.lines = std::move(lines);
}

QString previewOf(const CapitalCommand& command, const Ground& ground)
{
    if (command.action == Action::contribute)
        return ground.word("preview.contribute",
                           {ground.money(command.amountMinor.value_or(0), command.currency.value_or("")),
                            ground.nameOf(command.participantID.value_or("")),
                            ground.accountName(command.accountID.value_or(""))});
    if (command.action == Action::setParticipant)
        return RecordContents::previewOfPerson(command, ground, "owner");
    if (command.action == Action::reverse) {
        const auto& all = ground.form.captured.contributions;
        const auto* original = RecordDrafts::find(all, command.contributionID.value_or(""));
        return original ? ground.word("preview.takeBack", {ground.money(original->amountMinor, original->currency),
                                                           ground.accountMovedBy(original->transactionID)})
                        : QString{};
    }
    if (command.action == Action::setBaseline && command.entries) {
        std::int64_t sum = 0; // within its limit, as the command was accepted
        for (const auto& line : *command.entries)
            sum += line.amountMinor;
        return ground.word("preview.baseline", {ground.money(sum, command.currency.value_or("")),
                                                ground.day(command.throughDate.value_or(""))});
    }
    if (command.action == Action::setOwnership && command.ownership) {
        QStringList shares;
        for (const auto& line : *command.ownership) {
            if (line.ownershipBps != 0)
                shares << qString(line.participantName) + QLatin1Char{' '} +
                              RecordText::percent(line.ownershipBps, ground.locale);
        }
        return ground.word("preview.ownership", {ground.day(command.date), shares.join(QStringLiteral(", "))});
    }
    return {};
}

void fill(RecordFormContent& content, const Ground& ground)
{
    const auto& action = ground.form.route.action;
    if (action == Action::contribute)
        fillContribution(content, ground);
    else if (action == Action::reverse)
        fillReversal(content, ground);
    else if (action == Action::setBaseline)
        fillBaseline(content, ground);
    else if (action == Action::setOwnership)
        fillOwnership(content, ground);
    else
        RecordContents::fillPerson(content, ground, "owner");
    content.title = ground.word("title.capital." + action);
    content.confirm = ground.word("confirm.capital." + action);
}

}

RecordFormContent CapitalForms::content(const CapitalSubmission& submission, const CapitalForm& initial,
                                        const LedgerSnapshot& snapshot, std::string_view today, std::string_view locale)
{
    const auto& form = submission.form();
    const Ground ground{form, snapshot, today, locale};
    RecordFormContent content;
    fill(content, ground);
    auto ready = command(form, snapshot, {std::string{today}, "unsent"}, locale);
    const auto& action = form.route.action;
    auto opened = initial;
    opened.capturedPeople = form.capturedPeople; // newer rows are no change of a person's
    RecordContents::complete<CapitalForm, CapitalCommand>(
        content, submission, opened, ground,
        {.ready = ready ? std::optional{*std::move(ready)} : std::nullopt,
         .previewOf = previewOf,
         .keepsDay = action != Action::setOwnership && action != Action::setParticipant,
         .changed = refusalText(CapitalRefusal::staleRevision, locale)});
    return content;
}
