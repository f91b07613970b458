#include "LedgerUI/Presentation/Ledger/AccountGroup.h"

#include <string>

#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

struct Look {
    std::string_view name;
    const char* glyph;
};

constexpr std::array looks{Look{"company", "bank"}, Look{"employee", "person"}, Look{"refund", "arrow-return-left"},
                           Look{"archived", "archive"}};

const Look& lookOf(AccountGroup group)
{
    return looks[static_cast<std::size_t>(group)];
}

}

AccountGroup accountGroupOf(const Account& account)
{
    return account.archived ? AccountGroup::archived : accountGroupInUse(account);
}

AccountGroup accountGroupInUse(const Account& account)
{
    if (account.hasPurpose(AccountPurpose::refund))
        return AccountGroup::refund;
    return account.isRestricted() ? AccountGroup::employee : AccountGroup::company;
}

QString accountGroupTitle(AccountGroup group, std::string_view locale)
{
    return wordIn(locale, ledgerWords(), "balances." + std::string{accountGroupName(group)});
}

std::string_view accountGroupName(AccountGroup group)
{
    return lookOf(group).name;
}

QString accountGroupGlyph(AccountGroup group)
{
    return QString::fromLatin1(lookOf(group).glyph);
}
