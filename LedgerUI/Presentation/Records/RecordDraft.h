#pragma once

#include <algorithm>
#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Money/MoneyError.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerUI/Presentation/Forms/AmountTyping.h"
#include "LedgerUI/Presentation/Records/RecordForm.h"

/// What a person typed for each of several people, by the person.
using TypedTexts = std::map<std::string, std::string>;

/// Whether what was typed stays when the records are read anew.
enum class PreserveDraft { no, yes };

/// One thing to put right. A text that cannot be read keeps the reason of that beside what the action says of it.
template <class Refusal>
struct RecordProblem {
    std::optional<RecordPart> part = {}; // of the whole form without one
    std::string personID = {};
    std::optional<Refusal> refusal = {};
    std::optional<MoneyError> money = {};
    std::optional<PasteRefusal> paste = {}; // what was to be pasted is not an amount
    bool isNoShare = false;                 // it is no percentage from 0 to 100 with at most two decimals

    bool operator==(const RecordProblem&) const = default;
    /// `currency` is that of the form, in which a limit is named.
    [[nodiscard]] QString message(std::string_view locale, std::string_view currency) const;
};

/// What every form over a section of the books holds: what a person filled in, and the section as it stood when the
/// form was opened.
template <class RouteOf, class State, class Refusal>
struct RecordDraft {
    RouteOf route = {};
    std::string participantID = {}; // empty for a new person
    std::string name = {};
    std::optional<std::string> memberID = {};
    bool archived = false;
    std::string currency = {};
    std::string accountID = {};
    std::string note = {};
    std::vector<std::string> receiptIDs = {};
    State captured = {};
    bool initialized = false;
    bool needsReload = false;                           // the records have changed since
    bool amountDropped = false;                         // what was typed, when another currency was chosen
    TypedTexts newest = {};                             // what newer records say where a person typed something else
    std::map<RecordPart, std::string> newestParts = {}; // so of the fields that stand once, a day as its stamp
    std::vector<RecordProblem<Refusal>> problems = {};

    bool operator==(const RecordDraft&) const = default;
};

/// What the forms over a section do alike.
namespace RecordDrafts {

/// The service's answer that the records have changed since the form read them; null for every other failure.
const APIError* conflictIn(const std::optional<Failure>& refusal);

template <class Record>
const Record* find(const std::vector<Record>& records, std::string_view id)
{
    const auto found = std::ranges::find(records, id, &Record::id);
    return found == records.end() ? nullptr : &*found;
}

/// The first of these records that was not there before; null where there is none. Records are only ever added.
template <class Record>
const Record* firstSince(const std::vector<Record>& before, const std::vector<Record>& now)
{
    std::unordered_set<std::string_view> known;
    for (const auto& each : before)
        known.insert(each.id);
    const auto first = std::ranges::find_if(now, [&](const Record& each) { return !known.contains(each.id); });
    return first == now.end() ? nullptr : &*first;
}

/// Whether there is anybody who is not archived.
template <class Person>
bool hasPeople(const std::vector<Person>& people)
{
    return std::ranges::any_of(people, [](const Person& each) { return !each.archived; });
}

/// Empty where nothing was typed.
std::string typedFor(const TypedTexts& texts, const std::string& personID);

/// Fills the texts from the records of now. Where the draft is preserved, what was typed since `before` stays, and what
/// the records say differently is remembered beside it.
void fill(TypedTexts& typed, TypedTexts& newest, const TypedTexts& recorded, const TypedTexts& before,
          PreserveDraft preserve);

/// The basis points of all texts that can be read, also of those that are no share.
std::int64_t ratioTotal(const TypedTexts& texts, std::string_view locale);

/// In the separators of another language.
void rewrite(TypedTexts& texts, std::string_view fromLocale, std::string_view toLocale);

/// One text for each of these people, as a command takes them.
template <class Text, class People>
std::vector<Text> textsOf(const TypedTexts& texts, const People& people)
{
    std::vector<Text> typed;
    typed.reserve(people.size());
    for (const auto& person : people)
        typed.push_back({person.id, typedFor(texts, person.id)});
    return typed;
}

/// What the record of a person says; nothing for a new one.
template <class Form, class Person>
void fillPerson(Form& form, const Person* known)
{
    form.name = known ? known->name : std::string{};
    form.memberID = known ? known->memberID : std::nullopt;
    form.archived = known && known->archived;
}

/// What stands in a field follows newer records unless a person changed it; then what they say differently is
/// remembered beside it, as a person reads it.
template <class Form, class Value>
void follow(Form& form, RecordPart part, Value& value, const Value& before, const Value& now, std::string shown)
{
    form.newestParts.erase(part);
    if (value == before)
        value = now;
    else if (value != now && now != before)
        form.newestParts.insert_or_assign(part, std::move(shown));
}

/// The same for everything that the record of a person says.
template <class Form, class Person>
void followPerson(Form& form, const Person& before, const Person& now, const std::vector<Member>& members)
{
    follow(form, RecordPart::name, form.name, before.name, now.name, now.name);
    const auto* member = now.memberID ? find(members, *now.memberID) : nullptr;
    follow(form, RecordPart::member, form.memberID, before.memberID, now.memberID,
           member ? member->name : std::string{"–"});
    follow(form, RecordPart::archived, form.archived, before.archived, now.archived, {});
}

/// Takes what was changed in a part that every form keeps alike; says whether it was one.
template <class Form>
bool take(Form& form, const RecordEdit& edit)
{
    form.newestParts.erase(edit.part);
    switch (edit.part) {
    case RecordPart::name:
        form.name = edit.text;
        return true;
    case RecordPart::member:
        form.memberID = edit.text.empty() ? std::nullopt : std::optional{edit.text};
        return true;
    case RecordPart::archived:
        form.archived = edit.isOn;
        return true;
    case RecordPart::account:
        form.accountID = edit.text;
        return true;
    case RecordPart::note:
        form.note = edit.text;
        return true;
    default:
        return false;
    }
}

/// What is wrong with the amount, or with that of a person, is said instead of what was said of it before.
template <class Form, class Problem>
Form judgedAmount(Form form, Problem problem)
{
    problem.part = problem.personID.empty() ? RecordPart::amount : RecordPart::people;
    std::erase_if(form.problems,
                  [&](const auto& each) { return each.part == problem.part && each.personID == problem.personID; });
    form.problems.push_back(std::move(problem));
    return form;
}

/// Whether a person changed anything; that newer records came is no change of theirs.
template <class Form>
bool isEdited(Form form, const Form& initial)
{
    form.problems = initial.problems;
    form.captured = initial.captured;
    form.needsReload = initial.needsReload;
    form.amountDropped = initial.amountDropped;
    form.newest = initial.newest;
    form.newestParts = initial.newestParts;
    return form != initial;
}

/// A built command, or its refusal at the part of the form that it is about.
template <class Command, class Refusal>
std::expected<Command, std::vector<RecordProblem<Refusal>>> checked(std::expected<Command, Refusal> built,
                                                                    std::optional<RecordPart> (*partOf)(Refusal))
{
    if (built)
        return *std::move(built);
    return std::unexpected(
        std::vector{RecordProblem<Refusal>{.part = partOf(built.error()), .refusal = built.error()}});
}

}
