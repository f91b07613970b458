#include "LedgerService/Identity/Sessions/DemoCompanies.h"

#include <optional>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerService/Books/Demonstration/DemoCompany.h"
#include "LedgerService/Commands/CompanyFounding.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Log.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Companies/DemoVisitRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

constexpr std::size_t visitorLength = 16;

std::optional<std::string> findCompany(const Service& service, std::string_view locale)
{
    const auto loan = service.database.borrow();
    return Anew::onConflict([&] { return CompanyRepository::demoCompanyID(*loan, locale); });
}

CompanyFounding foundingOf(const Service& service, std::string_view locale, std::string_view visitor = {})
{
    auto demo = DemoCompany::make(locale, LedgerDay::localGregorian().day(service.clock()), visitor);
    CompanyFounding founding;
    founding.company = std::move(demo.company);
    founding.books = std::move(demo.books);
    if (visitor.empty())
        founding.passwordHash = Password::hash(DemoIdentity::password);
    for (const auto& member : founding.books.members)
        founding.demoProfileByMember.emplace(member.id, member.role);
    return founding;
}

/// Whether this has removed the company, which another process may do at the same moment.
bool removed(Connection& connection, Database::Instant until, std::string_view companyID)
{
    Transaction transaction{connection, until};
    if (!DemoVisitRepository::remove(connection, companyID))
        return false;
    transaction.commit();
    return true;
}

}

std::string DemoCompanies::ensure(const Service& service, std::string_view locale)
{
    if (auto id = findCompany(service, locale))
        return *std::move(id);
    const auto founding = foundingOf(service, locale); // takes a while: others may write meanwhile
    const auto loan = service.database.borrow();
    const auto turn = service.database.queueToWrite();
    return Anew::onConflict([&] {
        Transaction transaction{*loan, turn.until()};
        if (auto id = CompanyRepository::demoCompanyID(*loan, locale))
            return *std::move(id);
        founding.write(*loan);
        transaction.commit();
        return founding.company.id;
    });
}

std::expected<std::string, Refusal> DemoCompanies::foundForVisitor(const Service& service, std::string_view locale)
{
    // Lower-case letters and digits, for addresses.
    const auto visitor = Random::digest(Random::identifier()).substr(0, visitorLength);
    auto founding = foundingOf(service, locale, visitor);
    founding.demoVisitorAt = LedgerDay::stamp(service.clock());
    const auto loan = service.database.borrow();
    const auto turn = service.database.queueToWrite();
    return Anew::onConflict([&]() -> std::expected<std::string, Refusal> {
        Transaction transaction{*loan, turn.until()};
        if (DemoVisitRepository::count(*loan) >= service.policy.limits.visits)
            return std::unexpected(Refusal::of(ServiceCode::rateLimited, "The demonstration has too many visitors.",
                                               std::chrono::minutes{15}));
        founding.write(*loan);
        transaction.commit();
        return founding.company.id;
    });
}

int DemoCompanies::sweep(Database& database, std::chrono::system_clock::time_point now)
{
    const auto loan = database.borrow();
    const auto over = DemoVisitRepository::before(*loan, LedgerDay::stamp(now - visit));
    int swept = 0;
    for (const auto& companyID : over) { // a turn for each, so that nobody waits for long
        const auto turn = database.queueToWrite();
        try {
            swept += Anew::onConflict([&] { return removed(*loan, turn.until(), companyID); }) ? 1 : 0;
        } catch (const std::exception& failure) { // what keeps one from going does not keep the others
            if (DatabaseFailure::isBusy(failure) || DatabaseFailure::isOutOfReach(failure))
                throw;
            Log::failure("(demonstration)", DatabaseFailure::words(failure));
        }
    }
    return swept;
}

void DemoCompanies::ensureForEmail(const Service& service, std::string_view email)
{
    const auto address = UserRepository::normalized(email);
    if (!DemoIdentity::isAddress(address))
        return;
    for (const auto locale : AppLanguage::supportedLocales) {
        if (address.ends_with(DemoIdentity::emailEnding(locale)))
            ensure(service, locale);
    }
}

}
