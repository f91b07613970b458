#include "LedgerService/Identity/AccessFlow/PasswordChanging.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Audit/AuditRecord.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Identity/PersonAudit.h"
#include "LedgerService/Identity/PersonLimits.h"
#include "LedgerService/Identity/Sessions/Authentication.h"
#include "LedgerService/Identity/Token.h"
#include "LedgerService/Mail/MailTexts.h"
#include "LedgerService/Mail/Outbox.h"
#include "LedgerService/Mail/Postbox.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

std::optional<User> personBehind(Connection& connection, std::string_view tokenHash, std::string_view now)
{
    const auto owner = SessionRepository::find(connection, tokenHash, now);
    const auto member =
        owner ? MemberRepository::find(connection, owner->companyID, owner->memberID) : std::optional<Member>{};
    return member ? UserRepository::find(connection, member->userID) : std::nullopt;
}

std::optional<Refusal> whyNotChange(const Service& service, const User& person, const PasswordChange& change,
                                    std::string_view remote)
{
    if (person.email.ends_with(DemoIdentity::emailDomain))
        return Refusal::of(ServiceCode::forbidden, "The passwords of the demonstration stay.");
    if (!Password::isAcceptable(change.newPassword))
        return Refusal::of(ServiceCode::validationError,
                           "A password has 8 characters or more, and at most 1,024 bytes.");
    if (auto refusal = AttemptLimit::whyNotNow(service, PersonLimits{person.email, remote}.ofSignIn(service)))
        return refusal;
    if (!person.passwordHash || !Password::matches(change.currentPassword, *person.passwordHash))
        return Refusal::of(ServiceCode::invalidVerification, "The current password is another one.");
    return std::nullopt;
}

}

std::optional<Refusal> PasswordChanging::change(const Service& service, std::string_view token,
                                                const PasswordChange& change, std::string_view remote)
{
    const auto instant = service.clock();
    const auto now = LedgerDay::stamp(instant);
    const auto tokenHash = Token::hash(token);
    const auto loan = service.database.borrow();
    const auto person = Anew::onConflict([&] { return personBehind(*loan, tokenHash, now); });
    if (!person)
        return Authentication::unauthorized();
    if (auto refusal = whyNotChange(service, *person, change, remote))
        return refusal;
    const auto hash = Password::hash(change.newPassword);
    const auto turn = service.database.queueToWrite();
    auto refused = Anew::onConflict([&]() -> std::optional<Refusal> {
        Transaction transaction{*loan, turn.until()};
        const auto still = personBehind(*loan, tokenHash, now);
        if (!still || still->passwordHash != person->passwordHash)
            return Authentication::unauthorized(); // changed while it was looked at
        UserRepository::writePassword(*loan, person->id, hash, now);
        SessionRepository::revokeAllOfPerson(*loan, person->id, now, tokenHash);
        PersonAudit::tell(*loan, person->id, AuditKind::passwordChanged, service.origin, now);
        PersonLimits{person->email, remote}.settle(*loan, service, *person);
        Outbox::put(*loan, MailTexts::passwordChanged({person->email, person->locale}), instant);
        transaction.commit();
        return std::nullopt;
    });
    service.postbox.wake();
    return refused;
}

}
