#include "LedgerService/Operations/People/ManagePeople.h"

#include <chrono>

#include <boost/describe.hpp>
#include <fmt/core.h>
#include <fmt/ranges.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Text/PasswordRule.h"
#include "LedgerService/ArrivingCompany.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Identity/PersonAudit.h"
#include "LedgerService/Mail/MailTexts.h"
#include "LedgerService/Mail/Outbox.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/People/AccessChallengeRepository.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Transaction.h"
#include "LedgerService/TimeZone.h"

namespace LedgerService {

namespace {

constexpr std::size_t dayLength = 10; // of a stamp

std::string now()
{
    return LedgerDay::stamp(std::chrono::system_clock::now());
}

std::vector<Member> ownersOf(Connection& connection, const std::string& companyID)
{
    auto members = MemberRepository::all(connection, companyID);
    std::erase_if(members, [](const Member& each) { return each.role != MemberRole::owner; });
    return members;
}

ManagePeople::Refused decide(Connection& connection, const std::string& companyID, std::string_view status)
{
    Transaction transaction{connection, Transaction::Mode::writing};
    const auto company = CompanyRepository::find(connection, companyID);
    if (!company || company->demo)
        return "there is no company with this id; 'companies list' shows them";
    if (ArrivingCompany::is(company->approvalStatus))
        return "the company is being imported";
    if (company->approvalStatus.value_or(std::string{ApprovalStatus::approved}) == status)
        return fmt::format("the company is {} already", status);
    CompanyRepository::writeApproval(connection, companyID, std::string{status});
    AuditRecord record;
    record.at = now();
    record.origin = AuditOrigin::operating;
    record.kind = status == ApprovalStatus::approved ? AuditKind::companyApproved : AuditKind::companyRejected;
    record.record = companyID;
    AuditTrail::append(connection, companyID, std::move(record));
    for (const auto& owner : ownersOf(connection, companyID)) {
        const MailTexts::Reader reader{owner.email, owner.locale};
        Outbox::put(connection,
                    status == ApprovalStatus::approved ? MailTexts::applicationApproved(reader, company->name)
                                                       : MailTexts::applicationRejected(reader, company->name),
                    std::chrono::system_clock::now());
    }
    transaction.commit();
    return std::nullopt;
}

std::string stateOf(const Company& company)
{
    if (ArrivingCompany::is(company.approvalStatus))
        return std::string{ArrivingCompany::state};
    return company.approvalStatus.value_or(std::string{ApprovalStatus::approved});
}

std::string_view stateOf(const User& person)
{
    if (ArrivingCompany::is(person.deactivatedAt))
        return ArrivingCompany::state;
    if (person.deactivatedAt)
        return "deactivated";
    return person.passwordHash ? "active" : "no password";
}

/// A company's time zone as the audit trail tells it.
struct ZoneTold {
    std::optional<std::string> timeZone; // unset: the machine's
};
BOOST_DESCRIBE_STRUCT(ZoneTold, (), (timeZone))

ManagePeople::Refused moveTo(Connection& connection, const std::string& companyID, const std::string& zone)
{
    Transaction transaction{connection, Transaction::Mode::writing};
    const auto company = CompanyRepository::find(connection, companyID);
    if (!company || company->demo)
        return "there is no company with this id; 'companies list' shows them";
    if (ArrivingCompany::is(company->approvalStatus))
        return "the company is being imported";
    const ZoneTold before{CompanyRepository::timeZone(connection, companyID)};
    CompanyRepository::writeTimeZone(connection, companyID, zone);
    AuditRecord record;
    record.at = now();
    record.origin = AuditOrigin::operating;
    record.kind = AuditKind::companyZoneChanged;
    record.record = companyID;
    record.before = Json::encode(before);
    record.after = Json::encode(ZoneTold{zone});
    AuditTrail::append(connection, companyID, std::move(record));
    transaction.commit();
    return std::nullopt;
}

/// Does something to the person with this address, and ends all tokens and codes of that person.
template <class Change>
ManagePeople::Refused change(Connection& connection, const std::string& email, std::string_view kind,
                             const Change& change)
{
    return Anew::onConflict([&]() -> ManagePeople::Refused {
        Transaction transaction{connection, Transaction::Mode::writing};
        const auto person = UserRepository::findByEmail(connection, email);
        if (!person || ArrivingCompany::is(person->deactivatedAt))
            return "nobody is registered with this e-mail address; 'users list' shows everyone";
        change(*person);
        PersonAudit::tell(connection, person->id, kind, AuditOrigin::operating, now());
        SessionRepository::revokeAllOfPerson(connection, person->id, now());
        AccessChallengeRepository::removeFor(connection, person->email);
        transaction.commit();
        return std::nullopt;
    });
}

}

std::vector<std::string> ManagePeople::companies(Connection& connection)
{
    const Transaction transaction{connection, Transaction::Mode::reading};
    std::vector<std::string> lines;
    for (const auto& id : CompanyRepository::allIDs(connection)) {
        const auto company = CompanyRepository::find(connection, id);
        if (!company || company->demo)
            continue;
        std::vector<std::string> owners;
        for (const auto& each : ownersOf(connection, id))
            owners.push_back(each.email);
        lines.push_back(fmt::format("{}\t{}\t{}\t{}\t{}", id, stateOf(*company),
                                    company->createdAt.substr(0, dayLength), company->name, fmt::join(owners, ", ")));
    }
    return lines;
}

ManagePeople::Refused ManagePeople::approve(Connection& connection, const std::string& companyID)
{
    return Anew::onConflict([&] { return decide(connection, companyID, ApprovalStatus::approved); });
}

ManagePeople::Refused ManagePeople::reject(Connection& connection, const std::string& companyID)
{
    return Anew::onConflict([&] { return decide(connection, companyID, ApprovalStatus::rejected); });
}

ManagePeople::Refused ManagePeople::setTimeZone(Connection& connection, const std::string& companyID,
                                                const std::string& zone)
{
    if (!TimeZone::isKnown(zone))
        return fmt::format("{} is no time zone, such as Asia/Jakarta", zone);
    return Anew::onConflict([&] { return moveTo(connection, companyID, zone); });
}

std::vector<std::string> ManagePeople::users(Connection& connection)
{
    const Transaction transaction{connection, Transaction::Mode::reading};
    std::vector<std::string> lines;
    for (const auto& each : UserRepository::all(connection))
        lines.push_back(
            fmt::format("{}\t{}\t{}\t{}", each.email, stateOf(each), each.createdAt.substr(0, dayLength), each.name));
    return lines;
}

ManagePeople::Refused ManagePeople::reset(Connection& connection, const std::string& email,
                                          const std::optional<std::string>& newPassword)
{
    if (newPassword && !Password::isAcceptable(*newPassword))
        return fmt::format("a password has at least {} characters", PasswordRule::minimumLength);
    const auto hash = newPassword ? std::optional{Password::hash(*newPassword)} : std::nullopt;
    return change(connection, email, AuditKind::passwordReset, [&](const User& person) {
        if (hash)
            UserRepository::writePassword(connection, person.id, *hash, now());
        else
            UserRepository::clearPassword(connection, person.id);
    });
}

ManagePeople::Refused ManagePeople::deactivate(Connection& connection, const std::string& email)
{
    return change(connection, email, AuditKind::personDeactivated,
                  [&](const User& person) { UserRepository::writeDeactivated(connection, person.id, now()); });
}

ManagePeople::Refused ManagePeople::reactivate(Connection& connection, const std::string& email)
{
    return change(connection, email, AuditKind::personReactivated,
                  [&](const User& person) { UserRepository::writeDeactivated(connection, person.id, std::nullopt); });
}

}
