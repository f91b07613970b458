#include "LedgerService/Identity/PersonLimits.h"

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/AttemptRepository.h"
#include "LedgerService/Storage/Rows/People/KnownPlaceRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"

namespace LedgerService {

namespace {

/// A place that was not used for longer is forgotten.
constexpr std::chrono::days memory{180};

std::string placeOf(const User& person, std::string_view remote)
{
    return Random::digest(fmt::format("{} {}", person.id, remote));
}

std::string guessScope(std::string_view person, std::string_view remote)
{
    return fmt::format("guess:{}:{}", remote, person);
}

std::string strangersScope(std::string_view person)
{
    return fmt::format("strangers:{}", person);
}

}

PersonLimits::PersonLimits(std::string_view email, std::string_view remote)
    : m_email(email), m_remote(remote), m_person(Random::digest(UserRepository::normalized(email)))
{
}

std::vector<AttemptLimit::Scope> PersonLimits::ofSignIn(const Service& service) const
{
    const auto& limits = service.policy.limits;
    std::vector<AttemptLimit::Scope> scopes{
        {guessScope(m_person, m_remote), limits.signInsPerPerson, limits.window},
        {fmt::format("address:{}", m_remote), limits.signInsPerAddress, limits.window}};
    if (!isKnownPlace(service))
        scopes.push_back({strangersScope(m_person), limits.strangersPerPerson, limits.strangersWindow});
    return scopes;
}

std::vector<AttemptLimit::Scope> PersonLimits::ofCodes(const Service& service) const
{
    const auto& limits = service.policy.limits;
    std::vector<AttemptLimit::Scope> scopes{
        {fmt::format("mail:{}:{}", m_remote, m_person), limits.codesPerPerson, limits.window},
        {fmt::format("mails:{}", m_remote), limits.codesPerAddress, limits.window}};
    if (!isKnownPlace(service))
        scopes.push_back({fmt::format("mailed:{}", m_person), limits.strangersCodesPerPerson, limits.strangersWindow});
    return scopes;
}

bool PersonLimits::isKnownPlace(const Service& service) const
{
    const auto loan = service.database.borrow();
    return Anew::onConflict([&] {
        const auto person = UserRepository::findByEmail(*loan, m_email);
        return person && KnownPlaceRepository::isKnown(*loan, person->id, placeOf(*person, m_remote),
                                                       LedgerDay::stamp(service.clock() - memory));
    });
}

void PersonLimits::settle(Connection& connection, const Service& service, const User& person) const
{
    const auto now = service.clock();
    const auto place = placeOf(person, m_remote);
    AttemptRepository::forget(connection, guessScope(m_person, m_remote));
    if (!KnownPlaceRepository::isKnown(connection, person.id, place, LedgerDay::stamp(now - memory)))
        AttemptRepository::takeBack(connection, strangersScope(m_person));
    KnownPlaceRepository::remember(connection, person.id, place, LedgerDay::stamp(now));
}

}
