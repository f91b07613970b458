#include "LedgerService/Storage/CompanyFounding.h"

#include "LedgerService/Storage/AccountRepository.h"
#include "LedgerService/Storage/CategoryRepository.h"
#include "LedgerService/Storage/CompanyRepository.h"
#include "LedgerService/Storage/EntryRepository.h"
#include "LedgerService/Storage/MemberRepository.h"
#include "LedgerService/Storage/UserRepository.h"

void CompanyFounding::write(Connection& connection) const
{
    CompanyRepository::insert(connection, company, settings);
    for (const auto& [member, passwordHash, demoProfile] : members) {
        UserRepository::insert(connection,
                               {.id = member.userID,
                                .email = member.email,
                                .passwordHash = passwordHash,
                                .currentCompanyID = std::nullopt},
                               company.createdAt);
        MemberRepository::insert(connection, company.id, member, demoProfile, company.createdAt);
    }
    for (const auto& account : accounts) {
        AccountRepository::insert(connection, company.id, account);
        for (const auto& [currency, amountMinor] : account.balances)
            AccountRepository::writeBalance(connection, company.id, account.id, currency, amountMinor);
    }
    for (const auto& category : categories)
        CategoryRepository::insert(connection, company.id, category);
    for (const auto& entry : entries)
        EntryRepository::append(connection, company.id, entry);
}
