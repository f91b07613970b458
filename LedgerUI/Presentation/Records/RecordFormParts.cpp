#include "LedgerUI/Presentation/Records/RecordFormParts.h"

#include <algorithm>

#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

std::vector<std::string> RecordFormParts::currenciesOf(const std::vector<const Account*>& accounts)
{
    std::vector<std::string> codes;
    for (const auto& each : CurrencyInfo::supported()) {
        if (std::ranges::any_of(accounts, [&](const Account* account) { return account->holds(each.code); }))
            codes.push_back(each.code);
    }
    return codes;
}

void RecordFormParts::dropUnlessOffered(std::string& chosen, const std::vector<const Account*>& accounts)
{
    if (std::ranges::none_of(accounts, [&](const Account* account) { return account->id == chosen; }))
        chosen.clear();
}

void RecordFormParts::chooseOnly(std::string& chosen, const std::vector<const Account*>& accounts)
{
    if (chosen.empty() && accounts.size() == 1)
        chosen = accounts.front()->id;
}

RecordField RecordFormParts::text(RecordPart part, const QString& label, std::string_view value)
{
    return {.part = part,
            .kind = RecordField::Kind::text,
            .label = label,
            .value = qString(value),
            .limit = part == RecordPart::note ? EntryLimits::noteLength : Naming::maximumName};
}

RecordField RecordFormParts::amount(const QString& label, std::string_view value, std::string_view currency)
{
    return {.part = RecordPart::amount,
            .kind = RecordField::Kind::amount,
            .label = label,
            .value = qString(value),
            .currency = std::string{currency}};
}

RecordField RecordFormParts::fixed(RecordPart part, const QString& label, const QString& value)
{
    return {.part = part, .kind = RecordField::Kind::fixed, .label = label, .value = value};
}

RecordField RecordFormParts::tick(RecordPart part, const QString& label, bool isOn)
{
    return {.part = part, .kind = RecordField::Kind::tick, .label = label, .isOn = isOn};
}

RecordField RecordFormParts::choice(RecordPart part, const QString& label, std::vector<RecordChoice> choices,
                                    std::string_view chosen, const QString& prompt)
{
    return {.part = part,
            .kind = RecordField::Kind::choice,
            .label = label,
            .chosen = std::string{chosen},
            .choices = std::move(choices),
            .prompt = prompt};
}

RecordField RecordFormParts::currency(const QString& label, const std::vector<std::string>& codes,
                                      std::string_view chosen, std::string_view locale)
{
    std::vector<RecordChoice> choices;
    choices.reserve(codes.size() + 1);
    const auto add = [&](std::string_view code) {
        choices.push_back(
            {std::string{code}, qString(code) + QStringLiteral("  ") + qString(EntryWords::currency(code, locale))});
    };
    std::ranges::for_each(codes, add);
    // What was sent stays in sight where it could no longer be chosen.
    if (!chosen.empty() && std::ranges::find(codes, chosen) == codes.end())
        add(chosen);
    return choice(RecordPart::currency, label, std::move(choices), chosen, {});
}

RecordField RecordFormParts::account(const QString& label, const QString& prompt,
                                     const std::vector<const Account*>& accounts, std::string_view currency,
                                     std::string_view chosen, std::string_view locale)
{
    RecordField field{.part = RecordPart::account,
                      .kind = RecordField::Kind::account,
                      .label = label,
                      .chosen = std::string{chosen},
                      .prompt = prompt};
    for (const auto* each : accounts)
        field.accounts.push_back({.id = each->id,
                                  .name = qString(each->name),
                                  .balances = money(each->balance(currency), currency, locale),
                                  .group = {},
                                  .glyph = QStringLiteral("bank")});
    return field;
}

RecordField RecordFormParts::day(RecordPart part, const QString& label, std::string_view day, DayBounds bounds,
                                 const QString& prompt, std::string_view locale)
{
    RecordField field{.part = part, .kind = RecordField::Kind::day, .label = label, .chosen = std::string{day}};
    field.day = {.day = day.empty() ? bounds.latest : std::string{day},
                 .text = day.empty() ? prompt : DayText::longDay(day, locale),
                 .hint = {},
                 .message = {},
                 .bounds = std::move(bounds),
                 .mayChange = true};
    return field;
}

RecordField RecordFormParts::member(const QString& label, const QString& nobody, const LedgerSnapshot& snapshot,
                                    const std::vector<std::string>& taken, const std::optional<std::string>& chosen)
{
    std::vector<RecordChoice> choices{{std::string{}, nobody}};
    for (const auto& each : snapshot.members) {
        if (each.id == chosen || (each.active && std::ranges::find(taken, each.id) == taken.end()))
            choices.push_back({each.id, qString(each.name)});
    }
    return choice(RecordPart::member, label, std::move(choices), chosen.value_or(""), {});
}

RecordField RecordFormParts::half(RecordField field)
{
    field.isHalf = true;
    return field;
}

QString RecordFormParts::word(std::string_view key, std::string_view locale)
{
    return wordIn(locale, capitalFormWords(), key);
}

QString RecordFormParts::word(std::string_view key, std::string_view locale, std::initializer_list<QString> arguments)
{
    std::vector<std::string> filled;
    for (const auto& argument : arguments)
        filled.push_back(argument.toStdString());
    filled.resize(3);
    return wordIn(locale, capitalFormWords(), key, {filled[0], filled[1], filled[2]});
}

QString RecordFormParts::money(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    return balanceText(minor, currency, locale).text();
}
