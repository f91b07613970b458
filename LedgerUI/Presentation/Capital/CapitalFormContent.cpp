#include <algorithm>
#include <map>

#include <QStringList>

#include "LedgerCore/Domain/Capital/CapitalAccess.h"
#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Capital/CapitalForm.h"
#include "LedgerUI/Presentation/Capital/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Capital/RecordFormParts.h"
#include "LedgerUI/Presentation/Capital/RecordText.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

namespace Action = CapitalAction;
namespace Parts = RecordFormParts;

/// What the content is made from.
struct Ground {
    const CapitalForm& form;
    const LedgerSnapshot& snapshot;
    std::string_view today;
    std::string_view locale;

    [[nodiscard]] QString word(std::string_view key) const { return Parts::word(key, locale); }
    [[nodiscard]] QString word(std::string_view key, std::initializer_list<QString> arguments) const
    {
        return Parts::word(key, locale, arguments);
    }
    [[nodiscard]] QString day(std::string_view day) const { return DayText::longDay(day, locale); }
    [[nodiscard]] QString money(std::int64_t minor, std::string_view currency) const
    {
        return Parts::money(minor, currency, locale);
    }
    /// The place among all owners, by which colours are chosen.
    [[nodiscard]] std::size_t placeOf(std::string_view ownerID) const
    {
        const auto& all = form.captured.participants;
        const auto found = std::ranges::find(all, ownerID, &CapitalParticipant::id);
        return static_cast<std::size_t>(found - all.begin());
    }
    [[nodiscard]] QString nameOf(std::string_view ownerID) const
    {
        const auto at = placeOf(ownerID);
        return at < form.captured.participants.size() ? qString(form.captured.participants[at].name) : QString{};
    }
};

std::vector<RecordChoice> owners(const Ground& ground)
{
    std::vector<RecordChoice> choices;
    for (const auto& owner : ground.form.captured.participants) {
        if (!owner.archived)
            choices.push_back({owner.id, qString(owner.name)});
    }
    return choices;
}

void fillContribution(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    const auto all = CapitalAccess::accounts(ground.snapshot, std::nullopt);
    const auto offered = CapitalAccess::accounts(ground.snapshot, form.currency);
    const auto typed = form.amounts.find(form.participantID);
    content.explanation = ground.word("contribute.hint");
    content.fields = {
        Parts::half(Parts::choice(RecordPart::person, ground.word("owner"), owners(ground), form.participantID,
                                  ground.word("owner.choose"))),
        Parts::half(Parts::currency(ground.word("currency"), Parts::currenciesOf(all), form.currency, ground.locale)),
        Parts::account(ground.word("account.received"), ground.word("account.choose"), offered, form.currency,
                       form.accountID, ground.locale),
        Parts::half(Parts::amount(ground.word("amount.in", {qString(form.currency)}),
                                  typed == form.amounts.end() ? std::string{} : typed->second, form.currency)),
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

void fillOwner(RecordFormContent& content, const Ground& ground)
{
    const auto& form = ground.form;
    std::vector<RecordChoice> choices{{std::string{}, ground.word("owner.new")}};
    std::vector<std::string> taken;
    for (const auto& owner : form.captured.participants) {
        choices.push_back(
            {owner.id, owner.archived ? ground.word("person.archived", {qString(owner.name)}) : qString(owner.name)});
        if (owner.memberID && owner.id != form.participantID)
            taken.push_back(*owner.memberID);
    }
    content.explanation = ground.word("owner.hint");
    content.fields = {
        Parts::choice(RecordPart::person, ground.word("owner"), std::move(choices), form.participantID, {}),
        Parts::half(Parts::text(RecordPart::name, ground.word("name"), form.name)),
        Parts::half(
            Parts::member(ground.word("member"), ground.word("member.none"), ground.snapshot, taken, form.memberID))};
    if (!form.participantID.empty())
        content.fields.push_back(Parts::tick(RecordPart::archived, ground.word("owner.archived"), form.archived));
}

QString besideOf(const CapitalParticipant& owner, const Ground& ground)
{
    const auto newest = ground.form.newest.find(owner.id);
    if (newest != ground.form.newest.end())
        return ground.word("newest", {qString(newest->second)});
    const auto& members = ground.snapshot.members;
    const auto member =
        std::ranges::find_if(members, [&](const Member& each) { return owner.memberID && each.id == *owner.memberID; });
    return member == members.end() ? ground.word("member.none") : qString(member->name);
}

RecordLines linesOf(const std::map<std::string, std::string>& texts, const Ground& ground)
{
    RecordLines table{.personHead = ground.word("owner"), .besideHead = ground.word("member")};
    for (const auto& owner : ground.form.capturedPeople) {
        const auto typed = texts.find(owner.id);
        table.lines.push_back({.id = owner.id,
                               .name = qString(owner.name),
                               .beside = besideOf(owner, ground),
                               .swatch = ground.placeOf(owner.id),
                               .typed = typed == texts.end() ? QString{} : qString(typed->second)});
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
        const auto typed = form.amounts.find(owner.id);
        const auto amount =
            Money::parse(typed == form.amounts.end() ? std::string{} : typed->second, form.currency, ground.locale);
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
    const auto latest = std::to_string(std::stoi(std::string{ground.today.substr(0, 4)}) + 5) + "-12-31";
    content.fields = {Parts::day(RecordPart::startDate, ground.word("ownership.from"), form.startDate,
                                 {.earliest = {}, .latest = latest, .today = std::string{ground.today}},
                                 ground.word("day.choose"), ground.locale)};
    auto lines = linesOf(form.ratios, ground);
    lines.typedHead = ground.word("ownership.percent");
    const int total = CapitalForms::ratioTotal(form, ground.locale);
    const int off = total - BasisPoints::whole;
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
    if (command.action == Action::contribute) {
        const auto* account = ground.snapshot.account(command.accountID.value_or(""));
        return ground.word("preview.contribute",
                           {ground.money(command.amountMinor.value_or(0), command.currency.value_or("")),
                            ground.nameOf(command.participantID.value_or("")),
                            account ? qString(account->name) : QString{}});
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

void addMessages(RecordFormContent& content, const CapitalForm& form, std::string_view locale)
{
    for (const auto& problem : form.problems) {
        const auto message = problem.message(locale);
        if (problem.part == RecordPart::people && content.lines) {
            const auto line = std::ranges::find(content.lines->lines, problem.personID, &RecordLine::id);
            (line == content.lines->lines.end() ? content.lines->message : line->message) = message;
            continue;
        }
        for (auto& field : content.fields) {
            if (problem.part == field.part)
                field.message = field.day.message = message;
        }
    }
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
        fillOwner(content, ground);
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
    const auto& sent = submission.command();
    const bool isSettled = sent && !submission.isEditing();
    if (isSettled) {
        content.preview = previewOf(*sent, ground);
    } else if (const auto ready = command(form, snapshot, {std::string{today}, "unsent"}, locale)) {
        content.preview = previewOf(*ready, ground);
    }
    if (form.route.action != Action::setOwnership && form.route.action != Action::setParticipant)
        content.foot = ground.word("recordedOn", {ground.day(isSettled ? std::string_view{sent->date} : today)});
    addMessages(content, form, locale);
    if (form.needsReload && !isSettled) {
        content.conflict = refusalText(CapitalRefusal::staleRevision, locale);
        content.reload = ground.word("reload");
        content.whyNotConfirm = content.conflict;
    }
    auto compared = form;
    compared.problems = initial.problems;
    compared.captured = initial.captured;
    compared.capturedPeople = initial.capturedPeople;
    compared.needsReload = initial.needsReload;
    compared.newest = initial.newest;
    content.hasChanges = compared != initial;
    return content;
}
