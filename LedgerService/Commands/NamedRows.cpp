#include "LedgerService/Commands/NamedRows.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerService/Access/ReceiptAccess.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"

namespace LedgerService {

std::vector<Account> NamedRows::accountsOf(const CommandAct& act, const LedgerTransaction& entry)
{
    std::vector<Account> accounts;
    for (const auto& leg : entry.legs) {
        if (std::ranges::find(accounts, leg.accountID, &Account::id) != accounts.end())
            continue;
        if (auto account = AccountRepository::find(act.connection, act.companyID, leg.accountID))
            accounts.push_back(*std::move(account));
    }
    return accounts;
}

std::vector<Attachment> NamedRows::attachmentsOf(const CommandAct& act, const std::vector<std::string>& ids)
{
    std::vector<Attachment> attachments;
    for (const auto& id : ids | std::views::take(EntryLimits::receipts)) {
        if (auto receipt = ReceiptAccess::find(act.connection, act.companyID, act.member, id))
            attachments.push_back(std::move(receipt->attachment));
    }
    return attachments;
}

SectionRows NamedRows::sectionRows(const CommandAct& act, const std::optional<std::string>& accountID,
                                   const std::optional<std::string>& originalEntryID,
                                   const std::optional<std::vector<std::string>>& attachmentIDs)
{
    SectionRows rows{.recordID = Random::identifier(),
                     .entryID = Random::identifier(),
                     .today = act.today,
                     .now = act.now,
                     .member = act.member,
                     .members = MemberRepository::all(act.connection, act.companyID),
                     .accounts = {},
                     .original = std::nullopt,
                     .attachments = {},
                     .settings = CompanyRepository::settings(act.connection, act.companyID)};
    if (originalEntryID)
        rows.original = EntryRepository::find(act.connection, act.companyID, *originalEntryID);
    if (rows.original)
        rows.accounts = accountsOf(act, *rows.original);
    if (accountID && std::ranges::find(rows.accounts, *accountID, &Account::id) == rows.accounts.end()) {
        if (auto account = AccountRepository::find(act.connection, act.companyID, *accountID))
            rows.accounts.push_back(*std::move(account));
    }
    if (attachmentIDs)
        rows.attachments = attachmentsOf(act, *attachmentIDs);
    return rows;
}

void NamedRows::write(const CommandAct& act, const EntryChange& change)
{
    const auto text = EntryRepository::append(act.connection, act.companyID, change.entry);
    act.note.entries.push_back({change.entry.id, AuditTrail::digestOf(text)});
    for (const auto& each : change.balances)
        AccountRepository::writeBalance(act.connection, act.companyID, each.accountID, each.currency,
                                        each.balanceMinor);
}

}
