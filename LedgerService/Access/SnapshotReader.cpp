#include "LedgerService/Access/SnapshotReader.h"

#include <unordered_map>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerService/Access/Visibility.h"
#include "LedgerService/Storage/Rows/AccountRepository.h"
#include "LedgerService/Storage/Rows/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/CategoryRepository.h"
#include "LedgerService/Storage/Rows/CompanyRepository.h"
#include "LedgerService/Storage/Rows/EntryRepository.h"
#include "LedgerService/Storage/Rows/MemberRepository.h"

namespace LedgerService {

namespace {

std::vector<LedgerTransaction> visibleEntries(Connection& connection, std::string_view companyID,
                                              const std::vector<Account>& visible, std::size_t accountCount)
{
    if (visible.size() == accountCount)
        return EntryRepository::all(connection, companyID);
    std::vector<std::string> ids;
    ids.reserve(visible.size());
    for (const auto& account : visible)
        ids.push_back(account.id);
    return EntryRepository::touching(connection, companyID, ids);
}

/// Receipts of visible entries, named by their entries, and those that the member has uploaded but not linked yet.
void addAttachments(LedgerSnapshot& snapshot, std::vector<StoredAttachment> stored)
{
    if (stored.empty())
        return;
    std::unordered_map<std::string_view, LedgerTransaction*> byID;
    for (auto& entry : snapshot.transactions)
        byID.emplace(entry.id, &entry);
    for (auto& each : stored) {
        auto& attachment = each.attachment;
        if (attachment.transactionID) {
            const auto found = byID.find(*attachment.transactionID);
            if (found == byID.end())
                continue;
            found->second->attachmentIDs.push_back(attachment.id);
        } else if (each.memberID != snapshot.currentMember.id) {
            continue;
        }
        snapshot.attachments.push_back(std::move(attachment));
    }
}

}

std::optional<LedgerSnapshot> SnapshotReader::read(Connection& connection, std::string_view companyID,
                                                   std::string_view memberID)
{
    auto company = CompanyRepository::find(connection, companyID);
    auto member = MemberRepository::find(connection, companyID, memberID);
    if (!company || !member)
        return std::nullopt;
    LedgerSnapshot snapshot;
    snapshot.company = *std::move(company);
    snapshot.currentMember = *std::move(member);
    const auto& reader = snapshot.currentMember;
    snapshot.members = Visibility::members(MemberRepository::all(connection, companyID), reader);
    auto accounts = AccountRepository::all(connection, companyID);
    const auto accountCount = accounts.size();
    snapshot.transferDestinations = LedgerEntryAccess::transferDestinations(accounts, reader);
    snapshot.accounts = Visibility::accounts(std::move(accounts), reader);
    snapshot.categories = CategoryRepository::all(connection, companyID);
    snapshot.transactions = visibleEntries(connection, companyID, snapshot.accounts, accountCount);
    snapshot.financialSettings = CompanyRepository::settings(connection, companyID);
    addAttachments(snapshot, AttachmentRepository::all(connection, companyID));
    return snapshot;
}

}
