#include "LedgerService/Commands/NewCompany.h"

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"

namespace LedgerService {

namespace {

/// With all company-wide rights; those on accounts come with each account.
Member ownerOf(const NewCompany::Founder& founder)
{
    Member owner;
    owner.id = Random::identifier();
    owner.userID = founder.userID;
    owner.name = TextFold::trimmed(founder.name);
    owner.email = UserRepository::normalized(founder.email);
    owner.role = MemberRole::owner;
    owner.locale = founder.locale;
    owner.active = true;
    owner.permissions.emplace(Permission::all.begin(), Permission::all.end());
    owner.accountGrants.emplace();
    return owner;
}

}

CompanyFounding NewCompany::foundedBy(const Founder& founder) const
{
    CompanyFounding founding;
    founding.company.id = Random::identifier();
    founding.company.name = TextFold::trimmed(name);
    founding.company.countries = countries;
    founding.company.enabledLocales.assign(AppLanguage::supportedLocales.begin(), AppLanguage::supportedLocales.end());
    founding.company.createdAt = createdAt;
    founding.company.approvalStatus = approvalStatus;
    founding.timeZone = timeZone;
    founding.books.settings = FinancialSettings{};
    founding.books.settings->featuresConfigured = false;
    founding.books.members.push_back(ownerOf(founder));
    founding.passwordHash = founder.passwordHash;
    return founding;
}

}
