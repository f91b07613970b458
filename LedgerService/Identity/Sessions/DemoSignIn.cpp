#include "LedgerService/Identity/Sessions/DemoSignIn.h"

#include <array>

#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Identity/AttemptLimit.h"
#include "LedgerService/Identity/Sessions/DemoCompanies.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

std::expected<std::string, Refusal> companyFor(const Service& service, std::string_view locale)
{
    if (service.policy.demonstration == DemonstrationMode::visitors)
        return DemoCompanies::foundForVisitor(service, locale);
    return DemoCompanies::ensure(service, locale);
}

std::optional<Refusal> whyNotEnter(const Service& service, std::string_view profile, std::string_view remote)
{
    if (!service.policy.offersDemonstration())
        return Refusal::of(ServiceCode::forbidden, "This service offers no demonstration.");
    if (!DemoIdentity::isProfile(profile))
        return Refusal::of(ServiceCode::validationError, "There is no such profile.");
    const auto& limits = service.policy.limits;
    const bool own = service.policy.demonstration == DemonstrationMode::visitors;
    return AttemptLimit::whyNotNow(
        service, std::array{AttemptLimit::Scope{"demonstration:" + std::string{remote},
                                                own ? limits.visitsPerAddress : limits.demonstrationsPerAddress,
                                                limits.window}});
}

}

std::expected<IssuedSession, Refusal> DemoSignIn::as(const Service& service, std::string_view locale,
                                                     std::string_view profile, std::string_view remote)
{
    if (auto refusal = whyNotEnter(service, profile, remote))
        return std::unexpected(*std::move(refusal));
    const auto company = companyFor(service, locale);
    if (!company)
        return std::unexpected(company.error());
    const auto& companyID = *company;
    const auto loan = service.database.borrow();
    const auto turn = service.database.queueToWrite();
    return Anew::onConflict([&]() -> std::expected<IssuedSession, Refusal> {
        Transaction transaction{*loan, turn.until()};
        const auto memberID = MemberRepository::demoMemberID(*loan, companyID, profile);
        if (!memberID)
            return std::unexpected(Refusal::of(ServiceCode::notFound, "Nobody plays this profile."));
        if (const auto member = MemberRepository::find(*loan, companyID, *memberID); !member || !member->active)
            return std::unexpected(Refusal::of(ServiceCode::inactiveMember, "The member is deactivated."));
        auto session = Authentication::issue(*loan, {companyID, *memberID}, service);
        transaction.commit();
        return session;
    });
}

}
