#include "LedgerService/Identity/AccessFlow/AccessChallenges.h"

#include <array>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Identity/Members/Invitations.h"
#include "LedgerService/Identity/PersonLimits.h"
#include "LedgerService/Identity/Token.h"
#include "LedgerService/Mail/MailTexts.h"
#include "LedgerService/Mail/Outbox.h"
#include "LedgerService/Mail/Postbox.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/People/AccessChallengeRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

std::string codeHash(std::string_view challengeID, std::string_view code)
{
    return Random::digest(fmt::format("{}:{}", challengeID, TextFold::trimmed(code)));
}

Refusal mailUnavailable()
{
    return Refusal::of(ServiceCode::mailUnavailable, "Mail cannot be sent at this moment.");
}

std::optional<Refusal> whyNotStart(const Service& service, const AccessStart& start, std::string_view remote)
{
    if (!Naming::isEmail(UserRepository::normalized(start.email)))
        return Refusal::of(ServiceCode::validationError, "The e-mail address is not one.");
    if (start.purpose != AccessPurpose::join && start.purpose != AccessPurpose::reset)
        return Refusal::of(ServiceCode::validationError, "There is no such purpose.");
    if (auto refusal = AttemptLimit::whyNotNow(service, PersonLimits{start.email, remote}.ofCodes(service)))
        return refusal;
    if (!service.postbox.isReady())
        return mailUnavailable();
    return std::nullopt;
}

/// Whose password may be set anew. Those of the demonstration are public and stay so.
std::optional<std::string> resettable(Connection& connection, std::string_view email)
{
    const auto person = UserRepository::findByEmail(connection, email);
    const bool possible = person && !person->deactivatedAt && !DemoIdentity::isAddress(person->email);
    return possible ? std::optional{person->id} : std::nullopt;
}

std::string companyName(Connection& connection, std::string_view companyID)
{
    return CompanyRepository::find(connection, companyID).value_or(Company{}).name;
}

/// The letter with the code; to nobody where the code leads nowhere, so that the same work is done.
Mail letterOf(Connection& connection, const StoredChallenge& challenge, std::string_view code)
{
    const MailTexts::Reader reader{challenge.email, challenge.locale};
    auto mail = challenge.invitationID
                    ? MailTexts::joinCode(reader, code, companyName(connection, challenge.companyID.value_or("")))
                    : MailTexts::resetCode(reader, code);
    if (!challenge.leadsSomewhere())
        mail.to.clear();
    return mail;
}

/// The challenge without its code.
std::expected<StoredChallenge, Refusal> challengeFor(Connection& connection, const AccessStart& start,
                                                     std::string_view now)
{
    StoredChallenge challenge;
    challenge.id = Random::identifier();
    challenge.purpose = start.purpose;
    challenge.email = UserRepository::normalized(start.email);
    challenge.locale = AppLanguage::locale(start.locale);
    if (start.purpose == AccessPurpose::reset) {
        challenge.userID = resettable(connection, challenge.email);
        return challenge;
    }
    const auto invitation = Invitations::find(connection, start.invitationCode, challenge.email, now);
    if (!invitation)
        return std::unexpected(invitation.error());
    challenge.companyID = invitation->companyID;
    challenge.invitationID = invitation->id;
    return challenge;
}

std::optional<Refusal> whyNotTryCode(const Service& service, std::string_view remote)
{
    const auto& limits = service.policy.limits;
    return AttemptLimit::whyNotNow(service, std::array{AttemptLimit::Scope{fmt::format("code:{}", remote),
                                                                           limits.codeTriesPerAddress, limits.window}});
}

AccessVerification verified(Connection& connection, const StoredChallenge& challenge, std::string ticket)
{
    const auto person = UserRepository::findByEmail(connection, challenge.email);
    AccessVerification verification{.ticket = std::move(ticket),
                                    .existingAccount = person && person->passwordHash,
                                    .companyName = std::nullopt,
                                    .email = challenge.email};
    if (challenge.companyID)
        verification.companyName = companyName(connection, *challenge.companyID);
    return verification;
}

}

std::expected<AccessChallenge, Refusal> AccessChallenges::start(const Service& service, const AccessStart& start,
                                                                std::string_view remote)
{
    if (auto refusal = whyNotStart(service, start, remote))
        return std::unexpected(*std::move(refusal));
    const auto instant = service.clock();
    const auto now = LedgerDay::stamp(instant);
    const auto loan = service.database.borrow();
    const auto turn = service.database.queueToWrite();
    auto started = Anew::onConflict([&]() -> std::expected<AccessChallenge, Refusal> {
        Transaction transaction{*loan, turn.until()};
        AccessChallengeRepository::removeExpired(*loan, now);
        if (Outbox::isFull(*loan))
            return std::unexpected(mailUnavailable());
        auto challenge = challengeFor(*loan, start, now);
        if (!challenge)
            return std::unexpected(std::move(challenge.error()));
        const auto code = Random::digits(6);
        challenge->codeHash = codeHash(challenge->id, code);
        challenge->expiresAt = LedgerDay::stamp(instant + lifetime);
        AccessChallengeRepository::insert(*loan, *challenge);
        Outbox::put(*loan, letterOf(*loan, *challenge, code), instant, lifetime);
        transaction.commit();
        return AccessChallenge{challenge->id};
    });
    service.postbox.wake();
    return started;
}

std::expected<AccessVerification, Refusal> AccessChallenges::verify(const Service& service, const AccessCode& code,
                                                                    std::string_view remote)
{
    if (auto refusal = whyNotTryCode(service, remote))
        return std::unexpected(*std::move(refusal));
    const auto instant = service.clock();
    const auto loan = service.database.borrow();
    const auto turn = service.database.queueToWrite();
    return Anew::onConflict([&]() -> std::expected<AccessVerification, Refusal> {
        Transaction transaction{*loan, turn.until()};
        const auto challenge = AccessChallengeRepository::find(*loan, code.challengeID, LedgerDay::stamp(instant));
        if (!challenge || challenge->ticketHash || challenge->tries >= mostTries)
            return std::unexpected(invalid());
        AccessChallengeRepository::countTry(*loan, challenge->id);
        if (codeHash(challenge->id, code.code) != challenge->codeHash || !challenge->leadsSomewhere()) {
            transaction.commit();
            return std::unexpected(invalid());
        }
        auto ticket = Token::issue();
        AccessChallengeRepository::writeTicket(*loan, challenge->id, Token::hash(ticket),
                                               LedgerDay::stamp(instant + lifetime));
        auto verification = verified(*loan, *challenge, std::move(ticket));
        transaction.commit();
        return verification;
    });
}

bool AccessChallenges::isTicket(std::string_view ticket, std::string_view hash)
{
    return Token::hash(ticket) == hash;
}

Refusal AccessChallenges::invalid()
{
    return Refusal::of(ServiceCode::invalidVerification, "The code or the ticket is wrong, used or too old.");
}

}
