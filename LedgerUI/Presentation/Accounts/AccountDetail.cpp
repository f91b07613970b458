#include "LedgerUI/Presentation/Accounts/AccountDetail.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Accounts/AccountRights.h"
#include "LedgerUI/Presentation/Ledger/AccountGroup.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Line = AccountBook::Line;
using Property = AccountDetail::Property;

QString text(std::string_view key, std::string_view locale)
{
    return wordIn(locale, accountWords(), key);
}

std::string_view keyOf(OpeningBalancePolicy::Refusal refusal)
{
    using enum OpeningBalancePolicy::Refusal;
    switch (refusal) {
    case noAuthority:
        return "opening.noAuthority";
    case archived:
        return "opening.archived";
    case notResponsible:
        return "opening.notResponsible";
    case alreadyOpened:
        return "opening.alreadyOpened";
    case historyIncomplete:
        return "opening.historyIncomplete";
    }
    return {};
}

/// The opening balance that there is, else why there can be none, else that it is still to come.
QString openingText(const AccountBook& book, const Line& line, std::string_view locale)
{
    const auto& snapshot = book.snapshot();
    if (line.opening) {
        const auto& entry = snapshot.transactions[line.opening->entry];
        const auto amount = balanceText(line.opening->amountMinor, line.currency, locale);
        return DayText::longDay(entry.date, locale) + QLatin1Char{'\n'} + amount.text();
    }
    const auto refused = OpeningBalancePolicy::whyNot(snapshot, line.eligibility);
    return text(refused ? keyOf(*refused) : "opening.missing", locale);
}

QString fundersText(const Account& account, const LedgerSnapshot& snapshot, std::string_view locale)
{
    QStringList funders;
    for (const auto& member : snapshot.members) {
        if (member.can(AccountAction::transferIn, account.id))
            funders << qString(member.name);
    }
    return listed(funders, locale);
}

std::vector<Property> propertiesOf(const AccountBook& book, const Line& line, const LedgerNames& names)
{
    const auto& locale = names.locale();
    const auto& account = book.account(line);
    std::vector<Property> properties;
    const auto add = [&](std::string_view key, const QString& value) {
        if (!value.isEmpty())
            properties.push_back({text(key, locale), value});
    };
    if (account.archived)
        add("state", text("state.archived", locale));
    add("purpose", text("purpose." + std::string{accountGroupName(accountGroupInUse(account))}, locale));
    if (const auto responsible = account.responsibleMemberID())
        add("operator", qString(names.member(*responsible)));
    if (account.returnAccountID && !account.returnAccountID->empty())
        add("returnsTo", qString(names.account(*account.returnAccountID)));
    if (account.isRestricted())
        add("funders", fundersText(account, book.snapshot(), locale));
    QStringList codes;
    for (const auto& code : account.currencies)
        codes << qString(code);
    add("currencies", listed(codes, locale));
    add("opening", openingText(book, line, locale));
    add("rights", accountRightsText(book.snapshot().currentMember, account.id, locale));
    return properties;
}

std::optional<AccountDetail::Trend> trendOf(const Line& line, std::string_view locale)
{
    if (!line.monthEnds)
        return std::nullopt;
    const auto spoken = [&](std::int64_t minor) {
        return balanceText(minor, line.currency, locale).spoken.toStdString();
    };
    return AccountDetail::Trend{.values = *line.monthEnds,
                                .spoken = wordIn(locale, accountWords(), "trend",
                                                 {spoken(line.monthEnds->front()), spoken(line.monthEnds->back())})};
}

std::vector<AccountDetail::Movement> latestOf(const AccountBook& book, const Line& line, const LedgerNames& names)
{
    const auto& locale = names.locale();
    const auto today = LedgerDay::format(book.today());
    std::vector<AccountDetail::Movement> latest;
    for (const auto& each : line.latest) {
        const auto& entry = book.snapshot().transactions[each.entry];
        const auto amount = movementText(each.amountMinor, line.currency, locale);
        const auto title = qString(entry.note.empty() ? names.title(entry) : entry.note);
        const auto day = DayText::longDay(entry.date, locale);
        latest.push_back({.entryID = entry.id,
                          .kind = std::string{displayKind(entry)},
                          .day = DayText::nearDay(entry.date, today, locale),
                          .title = title,
                          .amount = amount,
                          .spoken = listed({day, qString(names.kind(entry)), title, amount.spoken}, locale),
                          .isReversed = entry.reversedBy.has_value()});
    }
    return latest;
}

}

AccountDetail accountDetail(const AccountBook& book, const AccountBook::Line& line, std::string_view locale)
{
    const LedgerNames names{book.snapshot(), std::string{locale}};
    const auto& account = book.account(line);
    return {.accountID = account.id,
            .currency = line.currency,
            .name = qString(account.name),
            .glyph = accountGroupGlyph(accountGroupInUse(account)),
            .balanceLabel = text("balance.now", locale),
            .balance = balanceText(line.balance, line.currency, locale),
            .trend = trendOf(line, locale),
            .properties = propertiesOf(book, line, names),
            .latest = latestOf(book, line, names),
            .isArchived = account.archived,
            .offersChange = MemberRights::canManage(book.snapshot().currentMember),
            .offersOpening = !OpeningBalancePolicy::whyNot(book.snapshot(), line.eligibility)};
}
