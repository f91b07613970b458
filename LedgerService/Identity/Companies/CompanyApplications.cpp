#include "LedgerService/Identity/Companies/CompanyApplications.h"

#include <chrono>
#include <optional>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Commands/NewCompany.h"
#include "LedgerService/Identity/AccessFlow/PersonRegistration.h"
#include "LedgerService/Mail/MailTexts.h"
#include "LedgerService/Mail/Outbox.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRequestRepository.h"

namespace LedgerService {

namespace {

constexpr std::chrono::hours day{24};

Company companyOf(Connection& connection, std::string_view id)
{
    return promised(CompanyRepository::find(connection, id), "a company that was founded exists");
}

std::optional<Refusal> whyNotApply(const CommandAct& act, const Service& service, const Company& from)
{
    if (from.demo || service.policy.registration == RegistrationMode::closed)
        return Refusal::of(ServiceCode::forbidden, "This service takes no registrations.");
    const auto since = LedgerDay::stamp(service.clock() - day);
    if (CompanyRequestRepository::countSince(act.connection, act.member.userID, since) >=
            CompanyApplications::mostADay ||
        CompanyRepository::pendingCount(act.connection) >= PersonRegistration::mostPending)
        return Refusal::of(ServiceCode::rateLimited, "Too many companies were asked for; try again later.", day);
    return std::nullopt;
}

/// With the countries and the time zone of the company that the person works in.
Company found(const CommandAct& act, const Service& service, std::string_view name, const Company& from)
{
    const bool open = service.policy.registration == RegistrationMode::open;
    const NewCompany order{.name = std::string{name},
                           .countries = from.countries,
                           .timeZone = CompanyRepository::timeZone(act.connection, from.id),
                           .approvalStatus = open ? ApprovalStatus::approved : ApprovalStatus::pending,
                           .createdAt = act.now};
    auto founding = order.foundedBy({.userID = act.member.userID,
                                     .name = act.member.name,
                                     .email = act.member.email,
                                     .locale = act.member.locale,
                                     .passwordHash = {}});
    founding.founder = founding.books.members.front().id;
    founding.origin = service.origin;
    founding.write(act.connection);
    if (!open)
        Outbox::put(act.connection, MailTexts::applicationReceived({act.member.email, act.member.locale}),
                    service.clock());
    return founding.company;
}

PendingCompanyRegistration described(const Company& company, const Member& member)
{
    return {.status = company.approvalStatus.value_or(std::string{ApprovalStatus::approved}),
            .applicationID = company.id,
            .companyName = company.name,
            .email = member.email};
}

}

std::expected<PendingCompanyRegistration, Refusal>
CompanyApplications::apply(const CommandAct& act, const Service& service, const CompanyApplication& application)
{
    if (!Naming::isName(application.companyName))
        return std::unexpected(Refusal::of(ServiceCode::validationError, "The company's name is none."));
    act.note.isToldElsewhere = true; // in the company that is founded, by its founding
    const auto name = TextFold::trimmed(application.companyName);
    if (const auto earlier = CompanyRequestRepository::find(act.connection, act.member.userID, application.requestID)) {
        if (earlier->companyName != name)
            return std::unexpected(
                Refusal::of(ServiceCode::idempotencyConflict, "The request belongs to another company."));
        return described(companyOf(act.connection, earlier->companyID), act.member);
    }
    const auto from = companyOf(act.connection, act.companyID);
    if (auto refusal = whyNotApply(act, service, from))
        return std::unexpected(*std::move(refusal));
    const auto company = found(act, service, name, from);
    CompanyRequestRepository::insert(act.connection, {.userID = act.member.userID,
                                                      .requestID = application.requestID,
                                                      .companyID = company.id,
                                                      .companyName = std::string{name},
                                                      .createdAt = act.now});
    return described(company, act.member);
}

}
