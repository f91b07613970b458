#include "LedgerUI/Presentation/Audit/AuditRows.h"

#include <algorithm>
#include <set>
#include <vector>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Audit/AuditValueText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Look = PlainCell::Look;

constexpr std::string_view kindKeys = "kind."; // how the keys of the words for kinds begin

/// Every kind that there is a word for, in the order of the words.
std::vector<std::string_view> kindsWithWords()
{
    std::vector<std::string_view> kinds;
    for (const auto& row : auditWords().rows()) {
        const std::string_view key{row.key};
        if (key.starts_with(kindKeys))
            kinds.push_back(key.substr(kindKeys.size()));
    }
    return kinds;
}

QString text(std::string_view key, std::string_view locale)
{
    return wordIn(locale, auditWords(), key);
}

/// The text of a key that the table may not hold, else what stands behind `prefix`.
QString textOr(std::string_view prefix, std::string_view name, std::string_view locale)
{
    const auto key = std::string{prefix} + std::string{name};
    const auto found = text(key, locale);
    return found == qString(key) ? qString(name) : found;
}

/// "20 Nov 2026, 14:32", as the service's clock had it.
QString moment(std::string_view stamp, std::string_view locale)
{
    constexpr std::size_t day = 10;
    constexpr std::size_t minutes = 16;
    if (stamp.size() < minutes)
        return qString(stamp);
    return DayText::shortDate(stamp.substr(0, day), locale) + QStringLiteral(", ") +
           DayText::timeOfDay(stamp.substr(day + 1, minutes - day - 1), locale);
}

template <class Records>
QString nameOf(const Records& records, std::string_view id)
{
    const auto found = std::ranges::find_if(records, [id](const auto& each) { return each.id == id; });
    return found == std::ranges::end(records) ? QString{} : qString(found->name);
}

QString personOf(const AuditTrailRecord& record, const LedgerSnapshot& snapshot, std::string_view locale)
{
    if (!record.memberID)
        return textOr("", record.origin, locale);
    const auto name = nameOf(snapshot.members, *record.memberID);
    return name.isEmpty() ? text("formerMember", locale) : name;
}

QString categoryOf(const LedgerSnapshot& snapshot, std::string_view id, std::string_view locale)
{
    const auto found = std::ranges::find(snapshot.categories, id, &Category::id);
    if (found == snapshot.categories.end())
        return {};
    return qString(CategoryDirectory{snapshot.categories}.fullPathName(*found, locale));
}

/// By its name in the books, else by its id.
QString recordOf(const AuditTrailRecord& record, const LedgerSnapshot& snapshot, std::string_view locale)
{
    if (!record.record)
        return {};
    const auto& id = *record.record;
    for (const auto& name : {nameOf(snapshot.accounts, id), nameOf(snapshot.members, id)}) {
        if (!name.isEmpty())
            return name;
    }
    if (const auto category = categoryOf(snapshot, id, locale); !category.isEmpty())
        return category;
    return id == snapshot.company.id ? qString(snapshot.company.name) : qString(id);
}

QString origin(const AuditTrailRecord& record)
{
    return record.memberID ? qString(record.origin) : QString{};
}

}

std::vector<PlainColumn> AuditRows::columns(std::string_view locale)
{
    return {{.head = text("when", locale)},
            {.head = text("who", locale)},
            {.head = text("what", locale)},
            {.head = text("record", locale)},
            {.head = text("from", locale), .align = PlainColumn::Align::left, .isPart = true}};
}

std::vector<PlainRow> AuditRows::rows(const std::vector<AuditTrailRecord>& records, const LedgerSnapshot& snapshot,
                                      std::string_view locale)
{
    std::vector<PlainRow> rows;
    rows.reserve(records.size());
    for (const auto& each : records)
        rows.push_back({.id = std::to_string(each.number),
                        .cells = {{.text = moment(each.at, locale), .look = Look::quiet},
                                  {.text = personOf(each, snapshot, locale)},
                                  {.text = kindText(each.kind, locale)},
                                  {.text = recordOf(each, snapshot, locale), .look = Look::quiet},
                                  {.text = origin(each), .look = Look::quiet}}});
    return rows;
}

std::vector<PlainColumn> AuditRows::changeColumns(std::string_view locale)
{
    return {{.head = text("field", locale)}, {.head = text("before", locale)}, {.head = text("after", locale)}};
}

std::vector<PlainRow> AuditRows::changes(const AuditTrailRecord& record, const LedgerSnapshot& snapshot,
                                         std::string_view locale)
{
    const AuditValueText words{snapshot, record.kind, std::string{locale}};
    const auto before = AuditValueText::comparable(record.before.value_or(AuditValues{}));
    const auto after = AuditValueText::comparable(record.after.value_or(AuditValues{}));
    std::set<std::string> fields;
    for (const auto* values : {&before, &after}) {
        for (const auto& [field, value] : *values)
            fields.insert(field);
    }
    std::vector<PlainRow> rows;
    const auto add = [&](const std::string& field, const QString& stood, const QString& stands) {
        const auto label = field == "digest" ? text("field.digest", locale) : words.label(field);
        rows.push_back(
            {.id = field, .cells = {{.text = label, .look = Look::quiet}, {.text = stood}, {.text = stands}}});
    };
    const auto shown = [&](const std::string& field, const auto& values) {
        const auto found = values.find(field);
        return found == values.end() || found->second.empty() ? text("none", locale)
                                                              : words.value(field, found->second, values);
    };
    for (const auto& field : fields) {
        const auto was = before.find(field);
        const auto is = after.find(field);
        if (was == before.end() || is == after.end() || was->second != is->second)
            add(field, shown(field, before), shown(field, after));
    }
    if (record.digest)
        add("digest", text("none", locale), qString(*record.digest));
    return rows;
}

QString AuditRows::headline(const AuditTrailRecord& record, const LedgerSnapshot& snapshot, std::string_view locale)
{
    QStringList parts{kindText(record.kind, locale), recordOf(record, snapshot, locale),
                      personOf(record, snapshot, locale), moment(record.at, locale)};
    parts.removeAll(QString{});
    return parts.join(QStringLiteral(" · "));
}

std::span<const std::string_view> AuditRows::kinds()
{
    static const auto all = kindsWithWords();
    return all;
}

QString AuditRows::kindText(std::string_view kind, std::string_view locale)
{
    return textOr(kindKeys, kind, locale);
}
