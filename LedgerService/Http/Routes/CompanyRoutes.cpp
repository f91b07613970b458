#include <array>

#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"
#include "LedgerService/Identity/Companies/CompanyApplications.h"
#include "LedgerService/Identity/Companies/CompanyProfile.h"
#include "LedgerService/Identity/Companies/OwnCompanies.h"

namespace LedgerService {

namespace {

std::expected<NewSnapshot, Refusal> change(const MemberCall& call, const SettingsUpdate& body)
{
    return snapshotUnless(CompanyProfile::change(actOf(call), body));
}

std::expected<NewSnapshot, Refusal> chooseColor(const MemberCall& call, const TransactionColorSelection& body)
{
    return snapshotUnless(CompanyProfile::chooseColor(actOf(call), body));
}

std::expected<CompanyChoices, Refusal> choices(const MemberCall& call)
{
    return OwnCompanies::choices(actOf(call), call.service.policy);
}

std::expected<IssuedSession, Refusal> enter(const MemberCall& call, const CompanySwitch& body)
{
    return OwnCompanies::enter({actOf(call), call.service}, body.companyID);
}

std::expected<PendingCompanyRegistration, Refusal> apply(const MemberCall& call, const CompanyApplication& body)
{
    return CompanyApplications::apply(actOf(call), call.service, body);
}

std::optional<Refusal> whyNotKey(const CompanyApplication& body)
{
    return CommandOnce::whyNot(body.requestID);
}

constexpr std::array routes{
    Route{"PATCH", "/v1/settings", writing<&change>},
    Route{"PATCH", "/v1/company/transaction-colors", writing<&chooseColor>},
    Route{"GET", "/v1/me/companies", reading<&choices>},
    Route{"POST", "/v1/me/companies", writing<&apply, &whyNotKey>},
    Route{"POST", "/v1/me/companies/switch", writing<&enter>},
};

}

std::span<const Route> RouteFamilies::company()
{
    return routes;
}

}
