#pragma once

#include <algorithm>
#include <optional>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Forms/Submission.h"
#include "LedgerUI/Presentation/Records/RecordDraft.h"
#include "LedgerUI/Presentation/Records/RecordFormParts.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"

/// What the content of a form over a section is made from.
template <class Form>
struct RecordGround {
    const Form& form;
    const LedgerSnapshot& snapshot;
    std::string_view today;
    std::string_view locale;

    [[nodiscard]] QString word(std::string_view key) const { return RecordFormParts::word(key, locale); }
    [[nodiscard]] QString word(std::string_view key, std::initializer_list<QString> arguments) const
    {
        return RecordFormParts::word(key, locale, arguments);
    }
    [[nodiscard]] QString day(std::string_view day) const { return DayText::longDay(day, locale); }
    [[nodiscard]] QString money(std::int64_t minor, std::string_view currency) const
    {
        return RecordFormParts::money(minor, currency, locale);
    }
    [[nodiscard]] QString nameOf(std::string_view personID) const
    {
        const auto* known = RecordDrafts::find(form.captured.participants, personID);
        return known ? qString(known->name) : QString{};
    }
    [[nodiscard]] QString accountName(std::string_view accountID) const
    {
        const auto* account = snapshot.account(accountID);
        return account ? qString(account->name) : QString{};
    }
    /// The account whose money an entry of the section moved.
    [[nodiscard]] QString accountMovedBy(std::string_view entryID) const
    {
        const auto* entry = snapshot.entry(entryID);
        return entry && !entry->legs.empty() ? accountName(entry->legs.front().accountID) : QString{};
    }
    /// As it was typed for a person.
    [[nodiscard]] QString typedFor(const TypedTexts& texts, const std::string& personID) const
    {
        return qString(RecordDrafts::typedFor(texts, personID));
    }
    /// "Newest: 60", where the records say something else than was typed; else empty.
    [[nodiscard]] QString newestFor(const std::string& personID) const
    {
        const auto newest = form.newest.find(personID);
        return newest == form.newest.end() ? QString{} : word("newest", {qString(newest->second)});
    }
};

/// What the contents of the forms over a section have alike.
namespace RecordContents {

/// A choice for everybody who is not archived.
template <class Form>
std::vector<RecordChoice> peopleOnOffer(const RecordGround<Form>& ground)
{
    std::vector<RecordChoice> choices;
    for (const auto& person : ground.form.captured.participants) {
        if (!person.archived)
            choices.push_back({person.id, qString(person.name)});
    }
    return choices;
}

/// The fields of a person's own record, `more` of them behind the member. The words begin with `who`.
template <class Form>
void fillPerson(RecordFormContent& content, const RecordGround<Form>& ground, const std::string& who,
                std::vector<RecordField> more = {})
{
    namespace Parts = RecordFormParts;
    const auto& form = ground.form;
    std::vector<RecordChoice> choices{{std::string{}, ground.word(who + ".new")}};
    std::vector<std::string> taken;
    for (const auto& each : form.captured.participants) {
        choices.push_back(
            {each.id, each.archived ? ground.word("person.archived", {qString(each.name)}) : qString(each.name)});
        if (each.memberID && each.id != form.participantID)
            taken.push_back(*each.memberID);
    }
    content.explanation = ground.word(who + ".hint");
    content.fields = {Parts::choice(RecordPart::person, ground.word(who), std::move(choices), form.participantID, {}),
                      Parts::half(Parts::text(RecordPart::name, ground.word("name"), form.name)),
                      Parts::half(Parts::member(ground.word("member"), ground.word("member.none"), ground.snapshot,
                                                taken, form.memberID))};
    std::ranges::move(more, std::back_inserter(content.fields));
    if (!form.participantID.empty())
        content.fields.push_back(Parts::tick(RecordPart::archived, ground.word(who + ".archived"), form.archived));
}

/// What becomes of a person's own record. The words begin with `who`.
template <class Form, class Command>
QString previewOfPerson(const Command& command, const RecordGround<Form>& ground, const std::string& who,
                        const QString& ratio = {})
{
    const auto* known = RecordDrafts::find(ground.form.captured.participants, command.participantID.value_or(""));
    const bool goes = command.archived.value_or(false) && known && !known->archived;
    const auto* becomes = !command.participantID ? ".adds" : goes ? ".archives" : ".saves";
    return ground.word(who + becomes, {qString(command.name.value_or("")), ratio});
}

/// Where the message of a problem stands; null where the form has no such part.
template <class Problem>
QString* messageFor(RecordFormContent& content, const Problem& problem)
{
    if (problem.part == RecordPart::people && content.lines) {
        const auto line = std::ranges::find(content.lines->lines, problem.personID, &RecordLine::id);
        return line == content.lines->lines.end() ? &content.lines->message : &line->message;
    }
    const auto field =
        std::ranges::find_if(content.fields, [&](const RecordField& each) { return problem.part == each.part; });
    return field == content.fields.end() ? nullptr : &field->message;
}

/// Each message where it belongs: in the row of a person, under its field, or over the whole form.
template <class Problem>
void addMessages(RecordFormContent& content, const std::vector<Problem>& problems, std::string_view locale,
                 std::string_view currency)
{
    for (const auto& problem : problems) {
        auto* place = messageFor(content, problem);
        if (!place)
            place = &content.problem;
        if (place->isEmpty() || problem.part == RecordPart::people)
            *place = problem.message(locale, currency);
    }
    for (auto& field : content.fields) {
        if (field.kind == RecordField::Kind::day)
            field.day.message = field.message;
    }
}

/// What newer records say of a field in which a person changed something, beside its name.
template <class Form>
void addNewest(RecordFormContent& content, const RecordGround<Form>& ground)
{
    for (auto& field : content.fields) {
        const auto newest = ground.form.newestParts.find(field.part);
        if (newest == ground.form.newestParts.end())
            continue;
        const bool isDay = field.kind == RecordField::Kind::day;
        const auto value = isDay ? ground.day(newest->second) : qString(newest->second);
        field.label += QStringLiteral(" · ") + ground.word("newest", {value});
    }
}

/// What a content says beside its fields: what the command does that would be sent, or that was; the day on which it is
/// recorded, where it has one of its own; and that the records have changed, which the service says in its own words.
template <class Form, class Command>
struct Sentences {
    std::optional<Command> ready = {}; // what would be sent now
    QString (*previewOf)(const Command&, const RecordGround<Form>&) = nullptr;
    bool keepsDay = true;
    QString changed = {};
};

template <class Form, class Command>
void complete(RecordFormContent& content, const Submission<Form, Command>& submission, const Form& initial,
              const RecordGround<Form>& ground, const Sentences<Form, Command>& sentences)
{
    const auto& form = ground.form;
    const auto& sent = submission.command();
    const bool isSettled = sent && !submission.isEditing();
    const auto& shown = isSettled ? sent : sentences.ready;
    if (shown)
        content.preview = sentences.previewOf(*shown, ground);
    if (sentences.keepsDay)
        content.foot = ground.word("recordedOn", {ground.day(isSettled ? std::string_view{sent->date} : ground.today)});
    addMessages(content, form.problems, ground.locale, form.currency);
    if (form.amountDropped && !isSettled)
        content.notice = ground.word("amountDropped");
    addNewest(content, ground);
    if (form.needsReload && !isSettled) {
        const auto* told = RecordDrafts::conflictIn(submission.refusal());
        content.conflict = told ? qString(told->friendlyMessage(ground.locale)) : sentences.changed;
        content.reload = ground.word("reload");
        content.whyNotConfirm = content.conflict;
    }
    content.hasChanges = RecordDrafts::isEdited(form, initial);
}

}
