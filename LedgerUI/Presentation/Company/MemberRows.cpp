#include "LedgerUI/Presentation/Company/MemberRows.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Records/Permission.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/InvitationExpiry.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"

namespace {

using Look = PlainCell::Look;

QString head(std::string_view key, std::string_view locale)
{
    return wordIn(locale, companyWords(), key);
}

PlainRow memberRow(const Member& member, const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto inUse = [](const Account& account) { return !account.archived; };
    const auto seen = [&](const Account& account) {
        return inUse(account) && member.can(AccountAction::view, account.id);
    };
    const auto all = static_cast<std::size_t>(std::ranges::count_if(snapshot.accounts, inUse));
    const auto some = static_cast<std::size_t>(std::ranges::count_if(snapshot.accounts, seen));
    const auto ofAll = groupedNumber(all, locale);
    const auto ofSome = groupedNumber(some, locale);
    const auto& words = companyWords();
    const auto name =
        member.id == snapshot.currentMember.id ? wordIn(locale, words, "you", {member.name}) : qString(member.name);
    const auto look = member.active ? Look::normal : Look::quiet;
    return {.id = member.id,
            .cells = {{.text = name, .look = look},
                      {.text = qString(member.email), .look = Look::quiet},
                      {.text = roleText(member.role, locale), .look = look},
                      {.text = qString(ofSome + " / " + ofAll),
                       .look = Look::quiet,
                       .spoken = wordIn(locale, words, "accountsSeen", {ofSome, ofAll})},
                      {.text = wordIn(locale, words, member.active ? "active" : "inactive"),
                       .look = member.active ? Look::normal : Look::chip}}};
}

PlainCell expiry(const PendingInvitation& invitation, std::string_view today, std::string_view locale)
{
    const auto day = DayText::shortDay(DayText::dayOf(invitation.expiresAt), locale);
    const auto& words = companyWords();
    const auto expiry = InvitationExpiry::of(invitation, today);
    if (expiry.isOver)
        return {.text = wordIn(locale, words, "expired", {day.toStdString()}), .look = Look::warning};
    if (expiry.days == 0)
        return {.text = wordIn(locale, words, "expiresToday", {day.toStdString()}), .look = Look::warning};
    const auto text = wordIn(locale, words, expiry.days == 1 ? "expiresIn.one" : "expiresIn.many",
                             {day.toStdString(), groupedNumber(static_cast<std::size_t>(expiry.days), locale)});
    return {.text = text, .look = expiry.isSoon() ? Look::warning : Look::normal};
}

QString actionList(const Member& member, const Account& account, std::string_view locale)
{
    QStringList actions;
    for (const auto action : AccountGrant::knownActions) {
        if (member.can(action, account.id))
            actions << wordIn(locale, accessWords(), "action." + std::string{action});
    }
    return listed(actions, locale);
}

}

std::vector<PlainColumn> MemberRows::memberColumns(std::string_view locale)
{
    return {{.head = head("member", locale)},
            {.head = head("email", locale)},
            {.head = head("role", locale)},
            {.head = head("accounts", locale), .align = PlainColumn::Align::right},
            {.head = head("state", locale)}};
}

std::vector<PlainRow> MemberRows::members(const LedgerSnapshot& snapshot, std::string_view locale)
{
    std::vector<PlainRow> rows;
    rows.reserve(snapshot.members.size());
    for (const auto& member : snapshot.members)
        rows.push_back(memberRow(member, snapshot, locale));
    return rows;
}

std::vector<PlainColumn> MemberRows::invitationColumns(std::string_view locale)
{
    return {{.head = head("name", locale)},
            {.head = head("email", locale)},
            {.head = head("role", locale)},
            {.head = head("sent", locale), .align = PlainColumn::Align::left, .isPart = true},
            {.head = head("expires", locale)}};
}

std::vector<PlainRow> MemberRows::invitations(const std::vector<PendingInvitation>& pending, std::string_view today,
                                              std::string_view locale)
{
    std::vector<PlainRow> rows;
    for (const auto& each : pending) {
        const auto sent = DayText::shortDay(DayText::dayOf(each.createdAt), locale);
        rows.push_back({.id = each.id,
                        .cells = {{.text = qString(each.name)},
                                  {.text = qString(each.email), .look = Look::quiet},
                                  {.text = roleText(each.role, locale)},
                                  {.text = sent, .look = Look::quiet},
                                  expiry(each, today, locale)}});
    }
    return rows;
}

std::vector<PlainColumn> MemberRows::ownAccessColumns(std::string_view locale)
{
    return {{.head = head("accounts", locale)}, {.head = head("rights", locale)}};
}

MemberRows::OwnAccess MemberRows::ownAccess(const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto& member = snapshot.currentMember;
    QStringList permissions;
    for (const auto permission : Permission::all) {
        if (member.hasPermission(permission))
            permissions << wordIn(locale, accessWords(), "permission." + std::string{permission});
    }
    OwnAccess access{.role = roleText(member.role, locale),
                     .permissions = permissions.isEmpty() ? head("accessNone", locale) : listed(permissions, locale),
                     .accounts = {},
                     .whomToAsk = {}};
    for (const auto& account : snapshot.accounts) {
        const auto actions = actionList(member, account, locale);
        if (!actions.isEmpty())
            access.accounts.push_back(
                {.id = account.id, .cells = {{.text = qString(account.name)}, {.text = actions}}});
    }
    QStringList managers;
    for (const auto& other : snapshot.members) {
        if (MemberRights::canManage(other))
            managers << qString(other.name);
    }
    if (!managers.isEmpty())
        access.whomToAsk = wordIn(locale, companyWords(), "accessAsk", {listed(managers, locale).toStdString()});
    return access;
}
