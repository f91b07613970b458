#include "LedgerUI/Presentation/Templates/TemplateForm.h"

#include <algorithm>
#include <charconv>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Templates/RecurrenceDays.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Forms/AmountTyping.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

/// 0 for texts that are no number.
int numberOf(std::string_view text)
{
    const auto plain = TextFold::trimmed(text);
    int number = 0;
    const auto [end, failure] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
    return failure == std::errc{} && end == plain.data() + plain.size() ? number : 0;
}

}

TemplateForm TemplateForm::fresh(TemplateEntry entry, std::string name, std::string entryDay, std::string_view locale)
{
    TemplateForm form;
    form.name = std::move(name);
    form.entry = std::move(entry);
    form.firstDay = entryDay;
    form.entryDay = std::move(entryDay);
    if (form.entry.amountMinor)
        form.amount = Money::formatDigits(*form.entry.amountMinor, form.entry.currency, locale);
    return form;
}

TemplateForm TemplateForm::of(const EntryTemplate& kept, std::string_view today, std::string_view locale)
{
    auto form = fresh(kept.entry, kept.name, std::string{today}, locale);
    form.id = kept.id;
    form.revision = kept.revision;
    form.shared = kept.shared;
    if (kept.recurrence) {
        form.unit = kept.recurrence->unit;
        form.every = std::to_string(kept.recurrence->every);
        form.firstDay = kept.recurrence->firstDay;
        form.lastDay = kept.recurrence->lastDay.value_or(std::string{});
    }
    return form;
}

TemplateForm TemplateForm::withUnit(std::string chosen) const
{
    auto form = *this;
    form.unit = std::move(chosen);
    if (!id.empty() || form.unit.empty() || !LedgerDay::isValid(entryDay))
        return form;
    const Recurrence rhythm{.unit = form.unit, .every = 1, .firstDay = entryDay, .lastDay = {}};
    const auto next = RecurrenceDays::between(rhythm, entryDay, RecurrenceDays::lastOfCalendar, 2).back();
    const bool isCountedInMonths = form.unit == RecurrenceUnit::month || form.unit == RecurrenceUnit::year;
    const bool keepsItsDay = !isCountedInMonths || next.substr(8) == entryDay.substr(8);
    form.firstDay = keepsItsDay ? next : entryDay;
    return form;
}

TransactionDraft TemplateForm::draftOf(const TemplateEntry& entry)
{
    TransactionDraft draft;
    draft.kind = entry.kind;
    draft.source = entry.sourceAccountID;
    draft.target = entry.targetAccountID;
    draft.currency = entry.currency;
    return draft;
}

const std::optional<std::string>& TemplateForm::primaryAccount(const TemplateEntry& entry)
{
    return draftOf(entry).onlyArrives() ? entry.targetAccountID : entry.sourceAccountID;
}

bool TemplateForm::hasDestination(const TemplateEntry& entry)
{
    return draftOf(entry).hasDestination();
}

bool TemplateForm::hasCategory(const TemplateEntry& entry)
{
    return draftOf(entry).hasCategory();
}

std::vector<EntryDestination> TemplateForm::destinations(const TemplateEntry& entry, const LedgerSnapshot& snapshot)
{
    auto offered = EntryRules::destinations(snapshot, draftOf(entry));
    std::erase_if(offered, [&](const EntryDestination& each) {
        return entry.targetCurrency &&
               std::ranges::find(each.currencies, *entry.targetCurrency) == each.currencies.end();
    });
    return offered;
}

TemplateForm TemplateForm::withAccount(const std::string& account, const LedgerSnapshot& snapshot) const
{
    auto form = *this;
    auto& changed = form.entry;
    if (!hasDestination(changed)) {
        (draftOf(changed).onlyArrives() ? changed.targetAccountID : changed.sourceAccountID) = account;
        return form;
    }
    changed.sourceAccountID = account;
    changed.targetAccountID = EntryRules::retainedTarget(changed.targetAccountID, destinations(changed, snapshot));
    return form;
}

TemplateForm TemplateForm::withTarget(const std::string& account) const
{
    auto form = *this;
    form.entry.targetAccountID = account;
    return form;
}

TemplateForm TemplateForm::withCategory(const std::string& category) const
{
    auto form = *this;
    form.entry.categoryID = category.empty() ? std::nullopt : std::optional{category};
    return form;
}

std::map<TemplateForm::Field, QString> TemplateForm::messages(std::string_view locale) const
{
    std::map<Field, QString> all;
    const auto say = [&](Field field, std::string_view key) {
        all.emplace(field, wordIn(locale, templateWords(), key));
    };
    if (!Naming::isName(name))
        say(Field::name, "wrong.name");
    if (!primaryAccount(entry))
        say(Field::account, "wrong.account");
    if (hasDestination(entry) && !entry.targetAccountID)
        say(Field::target, "wrong.account");
    if (!TextFold::trimmed(amount).empty() && !typedEntry(locale).amountMinor)
        say(Field::amount, "wrong.amount");
    if (!EntryText::fitsNote(entry.note))
        say(Field::note, "wrong.note");
    if (unit.empty())
        return all;
    const auto number = numberOf(every);
    if (number < 1 || number > RecurrenceDays::mostUnits)
        say(Field::every, "wrong.every");
    if (!LedgerDay::isValid(firstDay))
        say(Field::firstDay, "wrong.first");
    if (!lastDay.empty() && (!LedgerDay::isValid(lastDay) || lastDay < firstDay))
        say(Field::lastDay, "wrong.last");
    return all;
}

TemplateEntry TemplateForm::typedEntry(std::string_view locale) const
{
    auto typed = entry;
    const auto minor = AmountTyping::minor(qString(amount), entry.currency, locale);
    typed.amountMinor = minor && *minor > 0 && Money::isWithinLimit(*minor) ? minor : std::nullopt;
    if (typed.amountMinor != entry.amountMinor)
        typed.targetAmountMinor.reset(); // it belonged to the other amount
    return typed;
}

std::optional<Recurrence> TemplateForm::recurrence() const
{
    if (unit.empty())
        return std::nullopt;
    return Recurrence{.unit = unit,
                      .every = numberOf(every),
                      .firstDay = firstDay,
                      .lastDay = lastDay.empty() ? std::nullopt : std::optional{lastDay}};
}

TemplateCreate TemplateForm::creation(std::string key, std::string_view locale) const
{
    return {.name = name,
            .shared = shared,
            .entry = typedEntry(locale),
            .recurrence = recurrence(),
            .idempotencyKey = std::move(key)};
}

TemplateUpdate TemplateForm::update(std::string_view locale) const
{
    return {.name = name,
            .shared = shared,
            .entry = typedEntry(locale),
            .recurrence = recurrence(),
            .expectedRevision = revision};
}
