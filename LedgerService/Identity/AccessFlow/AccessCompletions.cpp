#include "LedgerService/Identity/AccessFlow/AccessCompletions.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Audit/AuditRecord.h"
#include "LedgerService/Identity/AccessFlow/AccessChallenges.h"
#include "LedgerService/Identity/Members/Invitations.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Identity/PersonAudit.h"
#include "LedgerService/Identity/PersonLimits.h"
#include "LedgerService/Identity/Sessions/SignIn.h"
#include "LedgerService/Mail/MailTexts.h"
#include "LedgerService/Mail/Outbox.h"
#include "LedgerService/Mail/Postbox.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/AccessChallengeRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// The challenge that the ticket belongs to.
std::optional<StoredChallenge> ticketed(Connection& connection, const AccessCompletion& completion,
                                        std::string_view now)
{
    auto challenge = AccessChallengeRepository::find(connection, completion.challengeID, now);
    const bool belongs =
        challenge && challenge->ticketHash && AccessChallenges::isTicket(completion.ticket, *challenge->ticketHash);
    return belongs ? std::move(challenge) : std::nullopt;
}

/// What is known before anything is written.
struct Completing {
    const Service& service;
    const AccessCompletion& completion;
    std::string_view remote;
    StoredChallenge challenge;
    std::optional<User> person;                 // registered with the address
    std::optional<std::string> newPasswordHash; // nothing for a person who keeps the password

    [[nodiscard]] bool resets() const { return challenge.purpose == AccessPurpose::reset; }
    /// That of the password which the person keeps.
    [[nodiscard]] std::optional<std::string> keptPasswordHash() const
    {
        return person && !resets() ? person->passwordHash : std::nullopt;
    }
};

/// The slow part: takes the password of a person who has one, or makes a hash of a new one.
std::optional<Refusal> whyNotPassword(Completing& completing)
{
    const auto& password = completing.completion.password;
    if (const auto kept = completing.keptPasswordHash()) {
        const PersonLimits limits{completing.challenge.email, completing.remote};
        if (auto refusal = AttemptLimit::whyNotNow(completing.service, limits.ofSignIn(completing.service)))
            return refusal;
        if (!Password::matches(password, *kept))
            return Authentication::unauthorized();
        return std::nullopt;
    }
    if (!Password::isAcceptable(password))
        return Refusal::of(ServiceCode::validationError,
                           "A password has 8 characters or more, and at most 1,024 bytes.");
    if (!completing.person && !Naming::isName(completing.completion.name))
        return Refusal::of(ServiceCode::validationError, "The name is not one.");
    completing.newPasswordHash = Password::hash(password);
    return std::nullopt;
}

User newPerson(const Completing& completing, const std::string& now)
{
    return {.id = Random::identifier(),
            .email = completing.challenge.email,
            .name = std::string{TextFold::trimmed(completing.completion.name)},
            .locale = std::string{AppLanguage::locale(completing.completion.locale)},
            .passwordHash = completing.newPasswordHash,
            .createdAt = now,
            .activatedAt = now,
            .deactivatedAt = std::nullopt,
            .currentCompanyID = std::nullopt};
}

/// The person, registered now if need be, with the password that was chosen.
User settled(Connection& connection, const Completing& completing, const std::string& now)
{
    if (!completing.person) {
        auto person = newPerson(completing, now);
        UserRepository::insert(connection, person);
        return person;
    }
    auto person = *completing.person;
    if (completing.newPasswordHash) {
        UserRepository::writePassword(connection, person.id, *completing.newPasswordHash, now);
        SessionRepository::revokeAllOfPerson(connection, person.id, now);
        PersonAudit::tell(connection, person.id, AuditKind::passwordReset, completing.service.origin, now);
        person.passwordHash = completing.newPasswordHash;
    }
    return person;
}

std::optional<Refusal> join(Connection& connection, const Completing& completing, User& person, std::string_view now)
{
    const auto& challenge = completing.challenge;
    const auto invitation = Invitations::findAgain(connection, challenge.companyID.value_or(""),
                                                   challenge.invitationID.value_or(""), challenge.email, now);
    if (!invitation)
        return invitation.error();
    const auto joined = Invitations::join(connection, *invitation,
                                          {.userID = person.id,
                                           .name = person.name,
                                           .locale = std::string{AppLanguage::locale(completing.completion.locale)}},
                                          {now, completing.service.origin});
    if (!joined)
        return joined.error();
    person.currentCompanyID = joined->companyID;
    return std::nullopt;
}

/// Everything in the one transaction. A new password is kept even when no company is open to the person.
std::expected<IssuedSession, Refusal> write(Connection& connection, Database::Instant until,
                                            const Completing& completing)
{
    const auto instant = completing.service.clock();
    const auto now = LedgerDay::stamp(instant);
    Transaction transaction{connection, until};
    const auto person = UserRepository::findByEmail(connection, completing.challenge.email);
    const bool same = person.has_value() == completing.person.has_value() &&
                      (!person || person->passwordHash == completing.person->passwordHash);
    if (!ticketed(connection, completing.completion, now) || !same || (person && person->deactivatedAt))
        return std::unexpected(AccessChallenges::invalid()); // others were quicker
    auto signing = settled(connection, completing, now);
    if (!completing.resets()) {
        if (auto refusal = join(connection, completing, signing, now))
            return std::unexpected(*std::move(refusal));
    }
    AccessChallengeRepository::removeFor(connection, completing.challenge.email);
    if (completing.person && completing.newPasswordHash)
        Outbox::put(connection, MailTexts::passwordChanged({signing.email, completing.challenge.locale}), instant);
    auto session = SignIn::enter(connection, completing.service, signing, completing.remote);
    if (session || completing.resets())
        transaction.commit();
    return session;
}

}

std::expected<IssuedSession, Refusal>
AccessCompletions::complete(const Service& service, const AccessCompletion& completion, std::string_view remote)
{
    const auto loan = service.database.borrow();
    auto challenge = Anew::onConflict([&] { return ticketed(*loan, completion, LedgerDay::stamp(service.clock())); });
    if (!challenge)
        return std::unexpected(AccessChallenges::invalid());
    Completing completing{.service = service,
                          .completion = completion,
                          .remote = remote,
                          .challenge = *std::move(challenge),
                          .person = {},
                          .newPasswordHash = {}};
    completing.person =
        Anew::onConflict([&] { return UserRepository::findByEmail(*loan, completing.challenge.email); });
    if (auto refusal = whyNotPassword(completing))
        return std::unexpected(*std::move(refusal));
    const auto turn = service.database.queueToWrite();
    auto session = Anew::onConflict([&] { return write(*loan, turn.until(), completing); });
    service.postbox.wake();
    return session;
}

}
