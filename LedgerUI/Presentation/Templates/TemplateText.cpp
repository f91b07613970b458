#include "LedgerUI/Presentation/Templates/TemplateText.h"

#include <algorithm>

#include "LedgerCore/Domain/Templates/TemplateSchedule.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Look = PlainCell::Look;

QString text(std::string_view key, std::string_view locale)
{
    return wordIn(locale, templateWords(), key);
}

}

QString TemplateText::recurrence(const std::optional<Recurrence>& recurrence, std::string_view locale)
{
    if (!recurrence)
        return text("never", locale);
    const auto rhythm =
        countedIn(locale, templateWords(), recurrence->unit, static_cast<std::size_t>(std::max(0, recurrence->every)));
    if (!recurrence->lastDay)
        return rhythm;
    return wordIn(locale, templateWords(), "until",
                  {rhythm.toStdString(), DayText::shortDate(*recurrence->lastDay, locale).toStdString()});
}

QString TemplateText::entry(const TemplateEntry& entry, const LedgerNames& names)
{
    QStringList accounts;
    for (const auto& id : {entry.sourceAccountID, entry.targetAccountID}) {
        if (id)
            accounts << qString(names.account(*id));
    }
    QStringList parts{wordIn(names.locale(), ledgerWords(), "kind." + entry.kind),
                      accounts.join(QStringLiteral(" → "))};
    if (entry.categoryID)
        parts << qString(names.category(*entry.categoryID));
    return parts.join(QStringLiteral(" · "));
}

QString TemplateText::amount(const TemplateEntry& entry, std::string_view locale)
{
    return entry.amountMinor ? balanceText(*entry.amountMinor, entry.currency, locale).text() : text("each", locale);
}

PlainCell TemplateText::next(const EntryTemplate& kept, std::string_view today, std::string_view locale)
{
    if (!kept.recurrence)
        return {.text = {}};
    const auto open = TemplateSchedule::openDays(kept, today);
    if (open.empty()) {
        const auto day = TemplateSchedule::nextDay(kept, today);
        return {.text = day ? DayText::shortDate(*day, locale) : text("over", locale), .look = Look::quiet};
    }
    const auto day = DayText::shortDate(open.front(), locale).toStdString();
    const auto due = open.size() == 1
                         ? wordIn(locale, templateWords(), "due", {day})
                         : wordIn(locale, templateWords(), "due.more", {day, groupedNumber(open.size(), locale)});
    return {.text = due, .look = Look::warning};
}

std::vector<PlainColumn> TemplateText::columns(std::string_view locale)
{
    return {{.head = text("column.name", locale)},
            {.head = text("column.entry", locale), .isPart = true},
            {.head = text("column.amount", locale), .align = PlainColumn::Align::right},
            {.head = text("column.next", locale)},
            {.head = text("column.repeats", locale), .isPart = true}};
}

std::vector<PlainRow> TemplateText::rows(const std::vector<EntryTemplate>& templates, const LedgerSnapshot& snapshot,
                                         std::string_view today, std::string_view locale)
{
    const LedgerNames names{snapshot, std::string{locale}};
    std::vector<PlainRow> rows;
    rows.reserve(templates.size());
    for (const auto& each : templates)
        rows.push_back({.id = each.id,
                        .cells = {{.text = qString(each.name), .look = Look::bold},
                                  {.text = entry(each.entry, names), .look = Look::quiet},
                                  {.text = amount(each.entry, locale),
                                   .look = each.entry.amountMinor ? Look::normal : Look::quiet},
                                  next(each, today, locale),
                                  {.text = recurrence(each.recurrence, locale), .look = Look::quiet}}});
    return rows;
}
