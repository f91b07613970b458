#include "LedgerService/Books/Demonstration/DemoCompany.h"

#include <array>

#include <fmt/core.h>

#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerService/Books/Demonstration/DemoCategories.h"
#include "LedgerService/Books/Demonstration/DemoHistory.h"
#include "LedgerService/Books/Demonstration/DemoIds.h"
#include "LedgerService/Books/Demonstration/DemoWords.h"

namespace LedgerService {

namespace {

using Texts = std::vector<std::string>;

constexpr std::array companyAccounts{"operating", "hanoi", "settlement", "guangzhou", "osaka", "cash"};

Account accountOf(const DemoIds& ids, std::string_view locale, std::string_view key, Texts currencies)
{
    Account account;
    account.id = ids.account(key);
    account.name = DemoWords::names().text(key, locale);
    account.currencies = std::move(currencies);
    return account;
}

std::vector<Account> accountsOf(const DemoIds& ids, std::string_view locale)
{
    auto drawer = accountOf(ids, locale, "float", {"IDR"});
    drawer.purpose = AccountPurpose::employee;
    drawer.operatorMemberID = ids.member(DemoIdentity::employee);
    drawer.returnAccountID = ids.account("operating");
    auto refunds = accountOf(ids, locale, "refunds", {"IDR", "USD"});
    refunds.purpose = AccountPurpose::refund;
    refunds.operatorMemberID = ids.member(DemoIdentity::finance);
    refunds.returnAccountID = ids.account("operating");
    return {accountOf(ids, locale, "operating", {"IDR", "USD"}),
            accountOf(ids, locale, "hanoi", {"VND"}),
            accountOf(ids, locale, "settlement", {"USD", "CNY", "JPY"}),
            accountOf(ids, locale, "guangzhou", {"CNY"}),
            accountOf(ids, locale, "osaka", {"JPY"}),
            accountOf(ids, locale, "cash", {"IDR"}),
            std::move(drawer),
            std::move(refunds)};
}

AccountGrant every(std::string accountID)
{
    return {std::move(accountID), {AccountGrant::knownActions.begin(), AccountGrant::knownActions.end()}};
}

AccountGrant granting(std::string accountID, std::initializer_list<std::string_view> actions)
{
    return {std::move(accountID), {actions.begin(), actions.end()}};
}

std::vector<AccountGrant> everywhere(const DemoIds& ids)
{
    std::vector<AccountGrant> grants;
    grants.reserve(companyAccounts.size() + 2);
    for (const auto* key : companyAccounts)
        grants.push_back(every(ids.account(key)));
    grants.push_back(every(ids.account("float")));
    grants.push_back(every(ids.account("refunds")));
    return grants;
}

/// The finance member keeps the company's accounts and pays refunds, and fills the float without using it.
std::vector<AccountGrant> financeGrants(const DemoIds& ids)
{
    auto grants = everywhere(ids);
    for (auto& grant : grants) {
        if (grant.accountID == ids.account("float"))
            grant = granting(grant.accountID, {AccountAction::view, AccountAction::transferIn, AccountAction::correct});
        else
            std::erase_if(grant.actions, [](const std::string& each) {
                return each == AccountAction::opening || each == AccountAction::distribution ||
                       each == AccountAction::capitalContribution;
            });
    }
    return grants;
}

struct Profile {
    std::string_view profile;
    std::string_view person;
    std::vector<std::string_view> permissions;
    std::vector<AccountGrant> grants;
    Texts pins; // categories, by key
};

std::vector<Profile> profilesOf(const DemoIds& ids)
{
    const std::vector<std::string_view> all{Permission::all.begin(), Permission::all.end()};
    return {
        {DemoIdentity::owner, "lin.yue", all, everywhere(ids), {"sales.wholesale", "staff.salaries", "fees.tax"}},
        {DemoIdentity::admin,
         "huong.nguyen",
         all,
         everywhere(ids),
         {"services.consulting", "premises.warehouse", "staff.salaries"}},
        {DemoIdentity::finance,
         "dewi.anggraini",
         {Permission::viewCompany, Permission::exportData, Permission::viewCapital, Permission::viewDividends},
         financeGrants(ids),
         {"sales.wholesale", "sales.export", "goods.purchase", "goods.customs", "logistics.sea",
          "utilities.electricity"}},
        {DemoIdentity::partner,
         "kenji.sato",
         {Permission::viewCompany, Permission::viewCapital, Permission::viewDividends},
         {granting(ids.account("cash"), {AccountAction::view, AccountAction::income, AccountAction::expense})},
         {"sales.retail", "premises.repairs"}},
        {DemoIdentity::employee,
         "rizky.pratama",
         {},
         {granting(ids.account("float"),
                   {AccountAction::view, AccountAction::expense, AccountAction::transferOut, AccountAction::correct})},
         {"logistics.courier", "staff.meals", "office.supplies"}},
    };
}

std::vector<Member> membersOf(const DemoIds& ids, std::string_view locale)
{
    std::vector<Member> members;
    for (auto& [profile, person, permissions, grants, pins] : profilesOf(ids)) {
        Member member;
        member.id = ids.member(profile);
        member.userID = ids.user(profile);
        member.name = DemoWords::names().text(profile, locale);
        member.email = fmt::format("{}@{}{}", person, ids.place(), DemoIdentity::emailDomain);
        member.role = profile;
        member.locale = locale;
        member.active = true;
        for (const auto& grant : grants)
            member.accountIDs.push_back(grant.accountID);
        member.permissions.emplace(permissions.begin(), permissions.end());
        member.accountGrants = grants;
        member.selectedCategoryIDs.emplace();
        for (const auto& pin : pins)
            member.selectedCategoryIDs->push_back(ids.category(pin));
        members.push_back(std::move(member));
    }
    return members;
}

}

DemoCompany DemoCompany::make(std::string_view locale, std::string_view lastDay, std::string_view visitor)
{
    const auto language = AppLanguage::locale(locale);
    const auto place = language.substr(0, 2);
    const DemoIds ids{visitor.empty() ? fmt::format("demo-{}", place) : fmt::format("demo-{}-{}", place, visitor)};
    const auto firstDay = DemoHistory::firstDay(lastDay);
    const auto founded = firstDay + "T01:00:00.000Z";

    DemoCompany made;
    made.company.id = ids.prefix;
    made.company.name = DemoWords::names().text("company", language);
    made.company.countries = {"ID", "VN", "SG", "CN", "JP"};
    made.company.enabledLocales = {AppLanguage::supportedLocales.begin(), AppLanguage::supportedLocales.end()};
    made.company.createdAt = founded;
    made.company.demo = DemoDescriptor{.version = 2, .locale = std::string{language}};
    made.company.approvalStatus = ApprovalStatus::approved;

    made.books.settings = FinancialSettings{.revision = 1,
                                            .contributionsEnabled = true,
                                            .dividendsEnabled = true,
                                            .bookkeepingStartDate = firstDay,
                                            .initializationMode = std::string{InitializationMode::openingBalances},
                                            .initializedAt = founded,
                                            .featuresConfigured = true};
    made.books.members = membersOf(ids, language);
    made.books.accounts = accountsOf(ids, language);
    made.books.categories = DemoCategories::make(ids);
    DemoHistory::write(made.books, ids, language, lastDay);
    return made;
}

}
