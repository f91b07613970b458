#include "LedgerService/Identity/DemoCompanies.h"

#include <optional>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerService/Books/Demonstration/DemoCompany.h"
#include "LedgerService/Commands/CompanyFounding.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/CompanyRepository.h"
#include "LedgerService/Storage/Rows/UserRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

std::optional<std::string> findCompany(const Service& service, std::string_view locale)
{
    const auto loan = service.database.borrow();
    return CompanyRepository::demoCompanyID(*loan, locale);
}

CompanyFounding foundingOf(const Service& service, std::string_view locale)
{
    auto demo = DemoCompany::make(locale, LedgerDay::localGregorian().day(service.clock()));
    CompanyFounding founding;
    founding.company = std::move(demo.company);
    founding.books = std::move(demo.books);
    founding.passwordHash = Password::hash(DemoIdentity::password);
    for (const auto& member : founding.books.members)
        founding.demoProfileByMember.emplace(member.id, member.role);
    return founding;
}

}

std::string DemoCompanies::ensure(const Service& service, std::string_view locale)
{
    if (auto id = findCompany(service, locale))
        return *std::move(id);
    const auto founding = foundingOf(service, locale); // takes a while: others may write meanwhile
    const auto loan = service.database.borrow();
    const auto turn = service.database.queueToWrite();
    Transaction transaction{*loan, Transaction::Mode::writing};
    if (auto id = CompanyRepository::demoCompanyID(*loan, locale))
        return *std::move(id);
    founding.write(*loan);
    transaction.commit();
    return founding.company.id;
}

void DemoCompanies::ensureForEmail(const Service& service, std::string_view email)
{
    const auto address = UserRepository::normalized(email);
    if (!address.ends_with(DemoIdentity::emailDomain))
        return;
    for (const auto locale : AppLanguage::supportedLocales) {
        if (address.ends_with(DemoIdentity::emailEnding(locale)))
            ensure(service, locale);
    }
}

}
