#include "LedgerService/Identity/Companies/CompanyProfile.h"

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Settings/CompanySettings.h"
#include "LedgerCore/Domain/Settings/TransactionColorOptions.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"

namespace LedgerService {

namespace {

Refusal refusalOf(CompanySettings::Refusal refusal)
{
    using enum CompanySettings::Refusal;
    switch (refusal) {
    case notManager:
        return Refusal::of(ServiceCode::forbidden, "The company is changed by those who manage it.");
    case name:
        return Refusal::of(ServiceCode::validationError, "A name is one line that says something.");
    case countries:
        return Refusal::of(ServiceCode::validationError, "Countries are codes of two capital letters, each once.");
    case locale:
        return Refusal::of(ServiceCode::validationError, "The service does not speak this language.");
    }
    return Refusal::of(ServiceCode::internalError, "The refusal has no words.");
}

SettingsUpdate settingsOf(const Company& company, const std::string& locale)
{
    return {.name = company.name, .countries = company.countries, .locale = locale};
}

Company companyOf(const CommandAct& act)
{
    return promised(CompanyRepository::find(act.connection, act.companyID), "a member's company exists");
}

}

std::optional<Refusal> CompanyProfile::change(const CommandAct& act, const SettingsUpdate& update)
{
    if (const auto refused = CompanySettings::whyNot(update, act.member))
        return refusalOf(*refused);
    const auto before = companyOf(act);
    auto company = before;
    if (update.name)
        company.name = TextFold::trimmed(*update.name);
    company.countries = update.countries.value_or(company.countries);
    CompanyRepository::write(act.connection, company);
    act.tell(settingsOf(before, act.member.locale), settingsOf(company, update.locale.value_or(act.member.locale)));
    if (update.locale) {
        auto member = act.member;
        member.locale = *update.locale;
        MemberRepository::write(act.connection, act.companyID, member);
        UserRepository::writeLocale(act.connection, member.userID, *update.locale);
    }
    return std::nullopt;
}

std::optional<Refusal> CompanyProfile::chooseColor(const CommandAct& act, const TransactionColorSelection& selection)
{
    if (!MemberRights::canManage(act.member))
        return refusalOf(CompanySettings::Refusal::notManager);
    if (!TransactionColorOptions::isChoice(selection))
        return Refusal::of(ServiceCode::validationError, "There is no such kind of entry or no such colour.");
    auto company = companyOf(act);
    if (!company.transactionColors)
        company.transactionColors.emplace();
    auto& color = (*company.transactionColors)[selection.kind];
    act.tell(TransactionColorSelection{.kind = selection.kind, .colorID = color}, selection);
    color = selection.colorID;
    CompanyRepository::write(act.connection, company);
    return std::nullopt;
}

}
