#include "LedgerService/Operations/Verify.h"

#include <algorithm>
#include <unordered_map>

#include <fmt/core.h>

#include "LedgerService/Books/BookInvariants.h"
#include "LedgerService/Storage/Rows/AccountRepository.h"
#include "LedgerService/Storage/Rows/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/CategoryRepository.h"
#include "LedgerService/Storage/Rows/CompanyRepository.h"
#include "LedgerService/Storage/Rows/EntryRepository.h"
#include "LedgerService/Storage/Rows/FragmentUpkeep.h"
#include "LedgerService/Storage/Rows/MemberRepository.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

void addAttachments(Books& books, std::vector<StoredAttachment> stored)
{
    std::unordered_map<std::string_view, LedgerTransaction*> byID;
    for (auto& entry : books.entries)
        byID.emplace(entry.id, &entry);
    for (auto& each : stored) {
        if (each.attachment.transactionID) {
            if (const auto found = byID.find(*each.attachment.transactionID); found != byID.end())
                found->second->attachmentIDs.push_back(each.attachment.id);
        }
        books.attachments.push_back(std::move(each.attachment));
    }
}

Books read(Connection& connection, std::string_view companyID)
{
    Books books;
    books.members = MemberRepository::all(connection, companyID);
    books.accounts = AccountRepository::all(connection, companyID);
    books.categories = CategoryRepository::all(connection, companyID);
    books.entries = EntryRepository::all(connection, companyID);
    books.settings = CompanyRepository::settings(connection, companyID);
    addAttachments(books, AttachmentRepository::all(connection, companyID));
    return books;
}

}

Verify::Report Verify::run(Connection& connection)
{
    const Transaction transaction{connection, Transaction::Mode::reading};
    Report report;
    for (const auto& companyID : CompanyRepository::allIDs(connection)) {
        const auto books = read(connection, companyID);
        report.companies += 1;
        report.entries += books.entries.size();
        for (const auto& problem : BookInvariants::broken(books))
            report.problems.push_back(fmt::format("company {}: {}", companyID, problem));
        for (const auto& problem : FragmentUpkeep::broken(connection, companyID))
            report.problems.push_back(fmt::format("company {}: {}", companyID, problem));
    }
    return report;
}

}
