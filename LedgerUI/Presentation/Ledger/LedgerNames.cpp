#include "LedgerUI/Presentation/Ledger/LedgerNames.h"

#include <utility>

#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

/// The words for what an entry is, most precise first.
std::string kindKey(const LedgerTransaction& entry)
{
    const auto kind = displayKind(entry);
    if (kind == EntryKind::transfer && entry.transferPurpose == TransferPurpose::funding)
        return "kind.funding";
    if (kind == EntryKind::transfer && entry.transferPurpose == TransferPurpose::returning)
        return "kind.return";
    if (kind == EntryKind::dividend && entry.distributionKind) {
        if (auto key = "kind.dividend." + *entry.distributionKind; ledgerWords().contains(key))
            return key;
    }
    return "kind." + std::string{kind};
}

}

std::string_view displayKind(const LedgerTransaction& entry)
{
    if (entry.kind == EntryKind::reversal)
        return EntryKind::reversal;
    if (entry.capitalContributionID)
        return EntryKind::capital;
    if (entry.dividendMovementID)
        return EntryKind::dividend;
    return entry.kind;
}

LedgerNames::LedgerNames(const LedgerSnapshot& snapshot, std::string locale)
    : m_locale(std::move(locale)), m_categories(snapshot.categories)
{
    for (const auto& account : snapshot.accounts)
        m_accounts.emplace(account.id, account.name);
    if (snapshot.transferDestinations) {
        for (const auto& destination : *snapshot.transferDestinations)
            m_accounts.emplace(destination.id, destination.name);
    }
    for (const auto& member : snapshot.members)
        m_members.emplace(member.id, member.name);
    m_members.emplace(snapshot.currentMember.id, snapshot.currentMember.name);
}

std::string LedgerNames::account(std::string_view id) const
{
    const auto found = m_accounts.find(id);
    return std::string{found == m_accounts.end() ? ledgerWords().text("account.hidden", m_locale) : found->second};
}

std::string LedgerNames::member(std::string_view id) const
{
    const auto found = m_members.find(id);
    return std::string{found == m_members.end() ? ledgerWords().text("member.hidden", m_locale) : found->second};
}

std::string LedgerNames::category(std::string_view id) const
{
    if (const auto* category = m_categories.find(id)) {
        if (auto path = m_categories.fullPathName(*category, m_locale); !path.empty())
            return path;
    }
    return std::string{ledgerWords().text("category.unknown", m_locale)};
}

std::string LedgerNames::kind(const LedgerTransaction& entry) const
{
    const auto key = kindKey(entry);
    return std::string{ledgerWords().contains(key) ? ledgerWords().text(key, m_locale) : std::string_view{entry.kind}};
}

std::string LedgerNames::title(const LedgerTransaction& entry) const
{
    return entry.categoryID && entry.kind != EntryKind::reversal ? category(*entry.categoryID) : kind(entry);
}
