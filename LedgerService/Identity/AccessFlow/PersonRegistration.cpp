#include "LedgerService/Identity/AccessFlow/PersonRegistration.h"

#include <algorithm>
#include <array>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Settings/CompanySettings.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Commands/NewCompany.h"
#include "LedgerService/Identity/AccessFlow/AccessChallenges.h"
#include "LedgerService/Identity/AttemptLimit.h"
#include "LedgerService/Identity/Members/Invitations.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Identity/Sessions/SignIn.h"
#include "LedgerService/Mail/MailTexts.h"
#include "LedgerService/Mail/Outbox.h"
#include "LedgerService/Mail/Postbox.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

using PersonRegistration::Registered;

constexpr std::size_t mostCountries = 20;

bool isInvited(const Registration& registration)
{
    return !TextFold::trimmed(registration.invitationCode.value_or("")).empty();
}

bool describesCompany(const Registration& registration)
{
    return Naming::isName(registration.companyName) && registration.countries.size() <= mostCountries &&
           CompanySettings::areCountries(registration.countries);
}

std::optional<Refusal> whyNotShaped(const Registration& registration)
{
    const auto email = UserRepository::normalized(registration.email);
    if (!Naming::isName(registration.name) || !Naming::isEmail(email) || DemoIdentity::isAddress(email))
        return Refusal::of(ServiceCode::validationError, "The name or the e-mail address is not one.");
    if (!Password::isAcceptable(registration.password))
        return Refusal::of(ServiceCode::validationError,
                           "A password has 8 characters or more, and at most 1,024 bytes.");
    if (!isInvited(registration) && !describesCompany(registration))
        return Refusal::of(ServiceCode::validationError, "The company's name or its countries are none.");
    return std::nullopt;
}

std::optional<Refusal> whyNotTry(const Service& service, const Registration& registration, std::string_view remote)
{
    if (auto refusal = whyNotShaped(registration))
        return refusal;
    if (!isInvited(registration) && service.policy.registration == RegistrationMode::closed)
        return Refusal::of(ServiceCode::forbidden, "This service takes no registrations.");
    const auto& limits = service.policy.limits;
    return AttemptLimit::whyNotNow(service,
                                   std::array{AttemptLimit::Scope{fmt::format("registration:{}", remote),
                                                                  limits.registrationsPerAddress, limits.window}});
}

std::optional<Refusal> whyNotUnknown(Connection& connection, const Registration& registration)
{
    if (UserRepository::findByEmail(connection, registration.email))
        return Refusal::of(ServiceCode::emailExists, "Somebody is registered with this e-mail address.");
    return std::nullopt;
}

std::optional<Refusal> whyNotNew(Connection& connection, const Registration& registration)
{
    if (auto refusal = whyNotUnknown(connection, registration))
        return refusal;
    if (CompanyRepository::pendingCount(connection) >= PersonRegistration::mostPending)
        return Refusal::of(ServiceCode::rateLimited, "Too many applications wait for review.", std::chrono::hours{1});
    return std::nullopt;
}

User personOf(const Registration& registration, std::string passwordHash, const std::string& now)
{
    return {.id = Random::identifier(),
            .email = UserRepository::normalized(registration.email),
            .name = std::string{TextFold::trimmed(registration.name)},
            .locale = std::string{PersonRegistration::localeOf(registration.countries)},
            .passwordHash = std::move(passwordHash),
            .createdAt = now,
            .activatedAt = now,
            .deactivatedAt = std::nullopt,
            .currentCompanyID = std::nullopt};
}

/// The company that invites the person.
std::expected<std::string, Refusal> invitingCompany(Connection& connection, const Registration& registration,
                                                    std::string_view now)
{
    if (auto refusal = whyNotUnknown(connection, registration))
        return std::unexpected(*std::move(refusal));
    const auto code = registration.invitationCode.value_or("");
    const auto invitation = Invitations::find(connection, code, registration.email, now);
    if (!invitation)
        return std::unexpected(invitation.error());
    return CompanyRepository::find(connection, invitation->companyID).value_or(Company{}).name;
}

/// The inviter knows the code too, so it does not show that somebody reads the mail of the address: the person is
/// registered and joins once the code that is mailed now has come back.
std::expected<Registered, Refusal> activate(const Service& service, const Registration& registration,
                                            std::string_view remote)
{
    auto company = [&] {
        const auto loan = service.database.borrow();
        const auto now = LedgerDay::stamp(service.clock());
        return Anew::onConflict([&] { return invitingCompany(*loan, registration, now); });
    }();
    if (!company)
        return std::unexpected(std::move(company.error()));
    const AccessStart start{.email = registration.email,
                            .invitationCode = registration.invitationCode.value_or(""),
                            .purpose = std::string{AccessPurpose::join},
                            .locale = std::string{PersonRegistration::localeOf(registration.countries)}};
    auto challenge = AccessChallenges::start(service, start, remote);
    if (!challenge)
        return std::unexpected(std::move(challenge.error()));
    return PendingCompanyRegistration{.status = "pending",
                                      .applicationID = std::move(challenge->challengeID),
                                      .companyName = *std::move(company),
                                      .email = UserRepository::normalized(registration.email)};
}

bool isOpen(const Service& service)
{
    return service.policy.registration == RegistrationMode::open;
}

Company found(Connection& connection, const Service& service, const Registration& registration, const User& person)
{
    const NewCompany order{.name = registration.companyName,
                           .countries = registration.countries,
                           .timeZone = std::nullopt,
                           .approvalStatus = isOpen(service) ? ApprovalStatus::approved : ApprovalStatus::pending,
                           .createdAt = person.createdAt};
    auto founding = order.foundedBy({.userID = person.id,
                                     .name = person.name,
                                     .email = person.email,
                                     .locale = person.locale,
                                     .passwordHash = person.passwordHash.value_or("")});
    founding.founder = founding.books.members.front().id;
    founding.origin = service.origin;
    founding.write(connection);
    return founding.company;
}

std::expected<Registered, Refusal> write(Connection& connection, const Service& service,
                                         const Registration& registration, const User& person, std::string_view remote)
{
    if (auto refusal = whyNotNew(connection, registration)) // by now
        return std::unexpected(*std::move(refusal));
    UserRepository::insert(connection, person);
    const auto company = found(connection, service, registration, person);
    if (isOpen(service))
        return SignIn::enter(connection, service, person, remote);
    Outbox::put(connection, MailTexts::applicationReceived({person.email, person.locale}), service.clock());
    return PendingCompanyRegistration{.status = std::string{ApprovalStatus::pending},
                                      .applicationID = company.id,
                                      .companyName = company.name,
                                      .email = person.email};
}

}

std::expected<Registered, Refusal>
PersonRegistration::carryOut(const Service& service, const Registration& registration, std::string_view remote)
{
    if (auto refusal = whyNotTry(service, registration, remote))
        return std::unexpected(*std::move(refusal));
    if (isInvited(registration))
        return activate(service, registration, remote);
    const auto loan = service.database.borrow();
    const auto now = LedgerDay::stamp(service.clock());
    if (auto refusal =
            Anew::onConflict([&] { return whyNotNew(*loan, registration); })) // before a password is hashed for nothing
        return std::unexpected(*std::move(refusal));
    const auto person = personOf(registration, Password::hash(registration.password), now);
    const auto turn = service.database.queueToWrite();
    auto registered = Anew::onConflict([&] {
        Transaction transaction{*loan, turn.until()};
        auto written = write(*loan, service, registration, person, remote);
        if (written)
            transaction.commit();
        return written;
    });
    if (registered)
        service.postbox.wake();
    return registered;
}

std::string_view PersonRegistration::localeOf(const std::vector<std::string>& countries)
{
    struct Row {
        std::string_view country;
        std::string_view locale;
    };
    constexpr std::array rows{Row{"CN", "zh-CN"}, Row{"HK", "zh-CN"}, Row{"MO", "zh-CN"},
                              Row{"TW", "zh-CN"}, Row{"ID", "id-ID"}, Row{"VN", "vi-VN"}};
    for (const auto& country : countries) {
        if (const auto* const row = std::ranges::find(rows, country, &Row::country); row != rows.end())
            return row->locale;
    }
    return "en-US";
}

}
