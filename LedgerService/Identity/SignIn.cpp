#include "LedgerService/Identity/SignIn.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerService/Identity/AttemptLimit.h"
#include "LedgerService/Identity/DemoCompanies.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/AttemptRepository.h"
#include "LedgerService/Storage/Rows/MemberRepository.h"
#include "LedgerService/Storage/Rows/UserRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// Guesses count by person and by where they come from, so that nobody can lock a person out from elsewhere. People
/// are named by digest: the table of attempts names nobody.
std::string guessScope(std::string_view email, std::string_view remote)
{
    return fmt::format("guess:{}:{}", remote, Random::digest(UserRepository::normalized(email)));
}

/// Counts before the password is looked at, so that guesses made at the same time count too.
std::optional<Refusal> whyNotTry(const Service& service, std::string_view email, std::string_view remote)
{
    const auto& limits = service.policy.limits;
    return AttemptLimit::whyNotNow(
        service, std::array{AttemptLimit::Scope{guessScope(email, remote), limits.signInsPerPerson},
                            AttemptLimit::Scope{fmt::format("address:{}", remote), limits.signInsPerAddress}});
}

std::optional<User> findUser(const Service& service, std::string_view email)
{
    const auto loan = service.database.borrow();
    return UserRepository::findByEmail(*loan, email);
}

/// The company to open, or why none is open to the person.
std::expected<SessionOwner, Refusal> choose(const std::vector<Membership>& memberships,
                                            const std::optional<std::string>& lastCompanyID,
                                            const ServicePolicy& policy)
{
    std::optional<Refusal> closed;
    std::optional<SessionOwner> chosen;
    for (const auto& each : memberships) {
        if (!each.active || (each.demonstration && !policy.demonstration))
            continue;
        if (auto refusal = Authentication::whyNotOpen(each.approvalStatus))
            closed = closed ? closed : refusal;
        else if (!chosen || each.companyID == lastCompanyID)
            chosen = SessionOwner{each.companyID, each.memberID};
    }
    if (chosen)
        return *std::move(chosen);
    if (closed)
        return std::unexpected(*std::move(closed));
    const bool hidden =
        !policy.demonstration && !memberships.empty() && std::ranges::all_of(memberships, &Membership::demonstration);
    if (hidden)
        return std::unexpected(Authentication::unauthorized());
    return std::unexpected(Refusal::of(ServiceCode::inactiveMember, "The member is deactivated."));
}

}

std::expected<IssuedSession, Refusal> SignIn::withPassword(const Service& service, std::string_view email,
                                                           std::string_view password, std::string_view remote)
{
    if (auto refusal = whyNotTry(service, email, remote))
        return std::unexpected(*std::move(refusal));
    if (service.policy.demonstration)
        DemoCompanies::ensureForEmail(service, email);
    const auto user = findUser(service, email);
    if (!user) {
        Password::pretendToMatch(password);
        return std::unexpected(Authentication::unauthorized());
    }
    if (!Password::matches(password, user->passwordHash))
        return std::unexpected(Authentication::unauthorized());

    const auto loan = service.database.borrow();
    const auto turn = service.database.queueToWrite();
    Transaction transaction{*loan, Transaction::Mode::writing};
    const auto now = UserRepository::findByEmail(*loan, email);
    if (!now || now->id != user->id || now->passwordHash != user->passwordHash)
        return std::unexpected(Authentication::unauthorized()); // changed while it was looked at
    const auto owner = choose(MemberRepository::memberships(*loan, user->id), now->currentCompanyID, service.policy);
    if (!owner)
        return std::unexpected(owner.error());
    auto session = Authentication::issue(*loan, *owner, service);
    UserRepository::writeCurrentCompany(*loan, user->id, owner->companyID);
    AttemptRepository::forget(*loan, guessScope(email, remote));
    transaction.commit();
    return session;
}

}
