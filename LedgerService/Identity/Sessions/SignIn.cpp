#include "LedgerService/Identity/Sessions/SignIn.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Identity/AttemptLimit.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Identity/PersonLimits.h"
#include "LedgerService/Identity/Sessions/DemoCompanies.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

std::optional<User> findUser(const Service& service, std::string_view email)
{
    const auto loan = service.database.borrow();
    return Anew::onConflict([&] { return UserRepository::findByEmail(*loan, email); });
}

/// The company to open, or why none is open to the person.
std::expected<SessionOwner, Refusal> choose(const std::vector<Membership>& memberships,
                                            const std::optional<std::string>& lastCompanyID,
                                            const ServicePolicy& policy)
{
    std::optional<Refusal> closed;
    std::optional<SessionOwner> chosen;
    for (const auto& each : memberships) {
        if (!each.active || (each.demonstration && !policy.offersDemonstration()))
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
    const bool hidden = !policy.offersDemonstration() && !memberships.empty() &&
                        std::ranges::all_of(memberships, &Membership::demonstration);
    if (hidden)
        return std::unexpected(Authentication::unauthorized());
    return std::unexpected(Refusal::of(ServiceCode::inactiveMember, "The member is deactivated."));
}

}

std::expected<IssuedSession, Refusal> SignIn::withPassword(const Service& service, std::string_view email,
                                                           std::string_view password, std::string_view remote)
{
    // Counted before the password is looked at, so that guesses made at the same time count too.
    if (auto refusal = AttemptLimit::whyNotNow(service, PersonLimits{email, remote}.ofSignIn(service)))
        return std::unexpected(*std::move(refusal));
    if (service.policy.demonstration == DemonstrationMode::shared)
        DemoCompanies::ensureForEmail(service, email);
    const auto person = findUser(service, email);
    if (!person || !person->passwordHash) {
        Password::pretendToMatch(password);
        return std::unexpected(Authentication::unauthorized());
    }
    if (!Password::matches(password, *person->passwordHash))
        return std::unexpected(Authentication::unauthorized());

    const auto loan = service.database.borrow();
    const auto turn = service.database.queueToWrite();
    return Anew::onConflict([&]() -> std::expected<IssuedSession, Refusal> {
        Transaction transaction{*loan, turn.until()};
        const auto now = UserRepository::find(*loan, person->id);
        if (!now || now->email != person->email || now->passwordHash != person->passwordHash)
            return std::unexpected(Authentication::unauthorized()); // changed while it was looked at
        auto session = enter(*loan, service, *now, remote);
        if (session)
            transaction.commit();
        return session;
    });
}

std::expected<IssuedSession, Refusal> SignIn::enter(Connection& connection, const Service& service, const User& person,
                                                    std::string_view remote)
{
    if (!person.canSignIn())
        return std::unexpected(Refusal::of(ServiceCode::inactiveMember, "The person is deactivated."));
    const auto owner =
        choose(MemberRepository::memberships(connection, person.id), person.currentCompanyID, service.policy);
    if (!owner)
        return std::unexpected(owner.error());
    auto session = Authentication::issue(connection, *owner, service);
    UserRepository::writeCurrentCompany(connection, person.id, owner->companyID);
    PersonLimits{person.email, remote}.settle(connection, service, person);
    return session;
}

}
