#include "LedgerUI/Presentation/Audit/AuditValueText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Settings/TransactionColorOptions.h"
#include "LedgerCore/Domain/Text/Country.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Values/ByteText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"

namespace {

using Values = std::map<std::string, std::string, std::less<>>;

constexpr std::string_view grants = "accountGrants ";
constexpr std::string_view rights = "accountGrants.";
constexpr std::string_view balances = "balances.";

/// "shares 2.amountMinor" without what stands before its last part.
std::string_view leafOf(std::string_view field)
{
    const auto dot = field.rfind('.');
    return dot == std::string_view::npos ? field : field.substr(dot + 1);
}

std::string_view pathOf(std::string_view field)
{
    return field.substr(0, field.size() - leafOf(field).size());
}

/// What makes a request safe to repeat tells a reader nothing.
bool isOfTheProtocol(std::string_view field)
{
    static constexpr std::array hidden{"idempotencyKey", "requestID", "expectedRevision",
                                       "revision",       "userID",    "expectedIDs"};
    return std::ranges::find(hidden, leafOf(field)) != hidden.end();
}

std::optional<std::int64_t> number(std::string_view text)
{
    std::int64_t value = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    return failure == std::errc{} && end == text.data() + text.size() ? std::optional{value} : std::nullopt;
}

/// The text of a key that the table may not hold, else what stands behind `prefix`.
QString textOr(const WordTable& table, std::string_view prefix, std::string_view name, std::string_view locale)
{
    const auto key = std::string{prefix} + std::string{name};
    return table.contains(key) ? wordIn(locale, table, key) : qString(name);
}

template <class Records>
const typename Records::value_type* find(const Records& records, std::string_view id)
{
    const auto found = std::ranges::find_if(records, [id](const auto& each) { return each.id == id; });
    return found == std::ranges::end(records) ? nullptr : &*found;
}

}

AuditValueText::AuditValueText(const LedgerSnapshot& snapshot, std::string_view kind, std::string locale)
    : m_snapshot{snapshot}, m_isOfDividends{kind.find("/dividends/") != std::string_view::npos},
      m_names{snapshot, std::move(locale)}
{
}

Values AuditValueText::comparable(const AuditValues& values)
{
    Values all;
    for (const auto& [field, value] : values.texts) {
        if (isOfTheProtocol(field) || (field.starts_with(grants) && field.ends_with(".accountID")))
            continue;
        const auto account = field.starts_with(grants) ? values.texts.find(std::string{pathOf(field)} + "accountID")
                                                       : values.texts.end();
        all.emplace(account == values.texts.end() ? field : std::string{rights} + account->second, value);
    }
    return all;
}

QString AuditValueText::label(std::string_view field) const
{
    const auto& locale = m_names.locale();
    const auto said = [&](std::string_view part) { return textOr(auditWords(), "field.", part, locale); };
    const auto pair = [](const QString& first, const QString& second) {
        return QStringLiteral("%1 · %2").arg(first, second);
    };
    if (field.starts_with(rights))
        return pair(said("accountGrants"), account(std::string{field.substr(rights.size())}));
    if (field.starts_with(balances))
        return pair(said("balances"), qString(leafOf(field)));
    if (field.starts_with("transactionColors."))
        return pair(said("transactionColors"), kind(std::string{leafOf(field)}));
    if (field.starts_with("names."))
        return pair(said("names"), language(std::string{leafOf(field)}));
    const auto path = pathOf(field);
    if (path.empty())
        return said(field);
    // "shares 2." is the second of a list.
    const auto list = path.substr(0, path.find_first_of(" ."));
    const auto rest = path.substr(list.size(), path.size() - list.size() - 1);
    return pair(said(list) + qString(rest), said(leafOf(field)));
}

AuditValueText::Meaning AuditValueText::meaningOf(std::string_view leaf)
{
    using Text = AuditValueText;
    static constexpr std::array meanings{
        std::pair{"accountID", &Text::account},
        std::pair{"accountIDs", &Text::account},
        std::pair{"returnAccountID", &Text::account},
        std::pair{"sourceAccountID", &Text::account},
        std::pair{"targetAccountID", &Text::account},
        std::pair{"memberID", &Text::member},
        std::pair{"ownerMemberID", &Text::member},
        std::pair{"operatorMemberID", &Text::member},
        std::pair{"fundingMemberIDs", &Text::member},
        std::pair{"categoryID", &Text::category},
        std::pair{"parentID", &Text::category},
        std::pair{"orderedIDs", &Text::category},
        std::pair{"selectedCategoryIDs", &Text::category},
        std::pair{"participantID", &Text::participant},
        std::pair{"role", &Text::role},
        std::pair{"permissions", &Text::permission},
        std::pair{"action", &Text::command},
        std::pair{"purpose", &Text::purpose},
        std::pair{"kind", &Text::kind},
        std::pair{"colorID", &Text::color},
        std::pair{"countries", &Text::country},
        std::pair{"locale", &Text::language},
        std::pair{"enabledLocales", &Text::language},
        std::pair{"initializationMode", &Text::mode},
        std::pair{"approvalStatus", &Text::status},
        std::pair{"date", &Text::day},
        std::pair{"throughDate", &Text::day},
        std::pair{"firstDay", &Text::day},
        std::pair{"lastDay", &Text::day},
        std::pair{"day", &Text::day},
        std::pair{"unit", &Text::unit},
        std::pair{"bookkeepingStartDate", &Text::day},
        std::pair{"createdAt", &Text::moment},
        std::pair{"ratioBps", &Text::share},
        std::pair{"ownershipBps", &Text::share},
        std::pair{"byteCount", &Text::bytes},
    };
    const auto found = std::ranges::find(meanings, leaf, [](const auto& each) { return std::string_view{each.first}; });
    return found == meanings.end() ? nullptr : found->second;
}

QString AuditValueText::value(std::string_view field, const std::string& value, const Values& all) const
{
    const auto& locale = m_names.locale();
    if (value == "true" || value == "false")
        return wordIn(locale, auditWords(), value == "true" ? "yes" : "no");
    if (field.starts_with(rights))
        return each(value, &AuditValueText::action);
    if (field.starts_with("transactionColors."))
        return color(value);
    const auto leaf = leafOf(field);
    const auto minor = number(value);
    if (field.starts_with(balances) && minor)
        return balanceText(*minor, leaf, locale).text();
    if ((leaf.ends_with("amountMinor") || leaf == "targetAmountMinor") && minor) {
        const auto* const beside = leaf == "targetAmountMinor" ? "targetCurrency" : "currency";
        auto currency = all.find(std::string{pathOf(field)} + beside);
        if (currency == all.end())
            currency = all.find("currency");
        return currency == all.end() ? qString(value) : balanceText(*minor, currency->second, locale).text();
    }
    const auto meaning = meaningOf(leaf);
    return meaning ? each(value, meaning) : qString(value);
}

/// A list stands with commas between its elements; none of what is looked up here holds one.
QString AuditValueText::each(const std::string& values, Meaning meaning) const
{
    QStringList texts;
    for (const auto& part : qString(values).split(QStringLiteral(", ")))
        texts << (this->*meaning)(part.toStdString());
    return texts.size() == 1 ? texts.front() : listed(texts, m_names.locale());
}

QString AuditValueText::account(const std::string& id) const
{
    const auto* found = find(m_snapshot.accounts, id);
    return qString(found ? found->name : id);
}

QString AuditValueText::member(const std::string& id) const
{
    const auto* found = find(m_snapshot.members, id);
    return qString(found ? found->name : id);
}

QString AuditValueText::category(const std::string& id) const
{
    return m_names.categories().find(id) ? qString(m_names.category(id)) : qString(id);
}

QString AuditValueText::participant(const std::string& id) const
{
    if (m_snapshot.capital) {
        if (const auto* owner = find(m_snapshot.capital->participants, id))
            return qString(owner->name);
    }
    if (m_snapshot.dividends) {
        if (const auto* person = find(m_snapshot.dividends->participants, id))
            return qString(person->name);
    }
    return qString(id);
}

QString AuditValueText::role(const std::string& role) const
{
    return roleText(role, m_names.locale());
}

QString AuditValueText::permission(const std::string& permission) const
{
    return textOr(accessWords(), "permission.", permission, m_names.locale());
}

QString AuditValueText::action(const std::string& action) const
{
    return textOr(accessWords(), "action.", action, m_names.locale());
}

QString AuditValueText::command(const std::string& command) const
{
    const auto title = (m_isOfDividends ? "title.dividend." : "title.capital.") + command;
    if (capitalFormWords().contains(title))
        return wordIn(m_names.locale(), capitalFormWords(), title);
    return textOr(auditWords(), "command.", command, m_names.locale());
}

QString AuditValueText::purpose(const std::string& purpose) const
{
    return textOr(accountWords(), "purpose.", purpose, m_names.locale());
}

QString AuditValueText::kind(const std::string& kind) const
{
    return textOr(ledgerWords(), "kind.", kind, m_names.locale());
}

QString AuditValueText::color(const std::string& id) const
{
    const auto* found = TransactionColorOptions::find(id);
    return qString(found ? found->names.text(m_names.locale()) : std::string_view{id});
}

QString AuditValueText::country(const std::string& code) const
{
    return qString(Country::name(code, m_names.locale()));
}

QString AuditValueText::language(const std::string& tag) const
{
    return textOr(auditWords(), "language.", tag, m_names.locale());
}

QString AuditValueText::mode(const std::string& mode) const
{
    return textOr(bookkeepingWords(), "mode.", mode, m_names.locale());
}

QString AuditValueText::status(const std::string& status) const
{
    return textOr(auditWords(), "status.", status, m_names.locale());
}

QString AuditValueText::unit(const std::string& unit) const
{
    return textOr(auditWords(), "unit.", unit, m_names.locale());
}

QString AuditValueText::day(const std::string& day) const
{
    return DayText::longDay(day, m_names.locale());
}

QString AuditValueText::moment(const std::string& stamp) const
{
    return DayText::moment(stamp, m_names.locale());
}

QString AuditValueText::share(const std::string& basisPoints) const
{
    const auto points = number(basisPoints);
    return points ? RecordText::percent(static_cast<int>(*points), m_names.locale()) : qString(basisPoints);
}

QString AuditValueText::bytes(const std::string& count) const
{
    const auto size = number(count);
    return size ? byteText(*size, m_names.locale()) : qString(count);
}
