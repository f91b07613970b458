#include "LedgerService/Commands/CompanyFounding.h"

#include <algorithm>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Companies/CategoryRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Companies/DemoVisitRepository.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Rows/Sections/CapitalRepository.h"
#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"

namespace LedgerService {

namespace {

void writePerson(Connection& connection, const CompanyFounding& founding, const Member& member)
{
    if (UserRepository::find(connection, member.userID))
        return;
    const auto& createdAt = founding.company.createdAt;
    UserRepository::insert(
        connection,
        {.id = member.userID,
         .email = member.email,
         .name = member.name,
         .locale = member.locale,
         .passwordHash = founding.passwordHash.empty() ? std::nullopt : std::optional{founding.passwordHash},
         .createdAt = createdAt,
         .activatedAt = createdAt,
         .deactivatedAt = std::nullopt,
         .currentCompanyID = std::nullopt});
}

void writeMembers(Connection& connection, const CompanyFounding& founding)
{
    for (const auto& member : founding.books.members) {
        writePerson(connection, founding, member);
        const auto profile = founding.demoProfileByMember.find(member.id);
        const bool plays = profile != founding.demoProfileByMember.end();
        MemberRepository::insert(connection, founding.company.id, member,
                                 plays ? std::optional{profile->second} : std::nullopt, founding.company.createdAt);
    }
}

void writeAccounts(Connection& connection, const CompanyFounding& founding)
{
    for (const auto& account : founding.books.accounts) {
        AccountRepository::insert(connection, founding.company.id, account);
        for (const auto& [currency, amountMinor] : account.balances)
            AccountRepository::writeBalance(connection, founding.company.id, account.id, currency, amountMinor);
    }
}

void writeEntry(Connection& connection, const CompanyFounding& founding, const LedgerTransaction& entry)
{
    for (const auto& id : entry.attachmentIDs) {
        const auto receipt = std::ranges::find(founding.books.attachments, id, &Attachment::id);
        AttachmentRepository::insert(connection, founding.company.id, *receipt, entry.memberID);
    }
    EntryRepository::append(connection, founding.company.id, entry);
}

}

void CompanyFounding::write(Connection& connection) const
{
    CompanyRepository::insert(connection, company, books.settings.value_or(FinancialSettings{}));
    CompanyRepository::writeTimeZone(connection, company.id, timeZone);
    if (demoVisitorAt)
        DemoVisitRepository::insert(connection, company.id, *demoVisitorAt);
    writeMembers(connection, *this);
    writeAccounts(connection, *this);
    for (const auto& category : books.categories)
        CategoryRepository::insert(connection, company.id, category);
    for (const auto& entry : books.entries)
        writeEntry(connection, *this, entry);
    for (const auto& change : books.capitalChanges)
        CapitalRepository::append(connection, company.id, change);
    for (const auto& change : books.dividendChanges)
        DividendRepository::append(connection, company.id, change);
    AuditRecord record;
    record.at = company.createdAt;
    record.memberID = founder;
    record.origin = origin;
    record.kind = AuditKind::companyFounded;
    record.record = company.id;
    record.after = Json::encode(company);
    AuditTrail::append(connection, company.id, std::move(record));
    AuditTrail::begin(connection, company.id);
}

}
