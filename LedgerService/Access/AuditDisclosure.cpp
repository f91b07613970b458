#include "LedgerService/Access/AuditDisclosure.h"

#include <algorithm>
#include <array>
#include <utility>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Templates/TemplateRules.h"
#include "LedgerService/Access/EntryDisclosure.h"
#include "LedgerService/Access/ReceiptAccess.h"
#include "LedgerService/Access/Visibility.h"
#include "LedgerService/Storage/Rows/Companies/TemplateRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"

namespace LedgerService {

namespace {

bool isOf(const AuditRecord& record, std::string_view path)
{
    const auto at = record.kind.find(' ');
    return at != std::string::npos && std::string_view{record.kind}.substr(at + 1).starts_with(path);
}

/// Whether every owner sees of the company what the record tells of. A kind that is not named here or below stays
/// closed: what it tells may be what a reader must not see.
bool isOpenToOwners(const AuditRecord& record)
{
    static constexpr std::array<std::string_view, 6> paths{
        "/v1/transactions", "/v1/categories", "/v1/settings", "/v1/company/", "/v1/financial-settings/", "/v1/me/"};
    static constexpr std::array kinds{AuditKind::companyFounded, AuditKind::companyZoneChanged};
    return std::ranges::any_of(paths, [&](std::string_view path) { return isOf(record, path); }) ||
           std::ranges::find(kinds, record.kind) != kinds.end();
}

/// The template that a text of the record tells, whole or as the command that made it; nothing for other texts.
std::optional<EntryTemplate> toldTemplate(const AuditRecord& record, const std::optional<std::string>& text)
{
    if (!text)
        return std::nullopt;
    if (auto kept = Json::decode<EntryTemplate>(*text))
        return *std::move(kept);
    const auto command = Json::decode<TemplateCreate>(*text);
    if (!command || !record.memberID)
        return std::nullopt;
    EntryTemplate made;
    made.memberID = *record.memberID;
    made.shared = command->shared;
    made.entry = command->entry;
    return made;
}

}

std::vector<AuditRecord> AuditDisclosure::of(std::vector<AuditRecord> records) const
{
    const auto entries = shownEntries(records);
    for (auto& record : records) {
        if ((record.before || record.after) && !shows(record)) {
            record.before.reset();
            record.after.reset();
        }
        if (record.digest && !entries.contains(record.record.value_or("")))
            record.digest.reset();
        record.chain.clear();
    }
    return records;
}

/// A template may have been its author's alone, or of other accounts, when the record was made: what it tells of the
/// template decides. A record that tells of a due day only is judged by the template as it is.
bool AuditDisclosure::showsTemplate(const AuditRecord& record) const
{
    const std::array told{toldTemplate(record, record.before), toldTemplate(record, record.after)};
    if (told.front() || told.back())
        return std::ranges::all_of(told,
                                   [&](const auto& each) { return !each || TemplateRules::maySee(*each, m_reader); });
    const auto stored =
        record.record ? TemplateRepository::find(m_connection, m_companyID, *record.record) : std::nullopt;
    return stored && TemplateRules::maySee(stored->kept, m_reader);
}

/// The entries that the reader sees whole: who knows an entry but for its amount finds the amount by the digest.
AuditDisclosure::Entries AuditDisclosure::shownEntries(const std::vector<AuditRecord>& records) const
{
    std::vector<std::string> told;
    for (const auto& record : records) {
        if (record.digest && record.record)
            told.push_back(*record.record);
    }
    const EntryDisclosure disclosure{m_reader};
    Entries shown;
    for (const auto& each : EntryRepository::sights(m_connection, m_companyID, told)) {
        if (Visibility::seesAny(each.accountIDs, m_reader) && !disclosure.hidesOf(each.isOfCapital, each.isOfDividends))
            shown.insert(each.id);
    }
    return shown;
}

bool AuditDisclosure::shows(const AuditRecord& record) const
{
    if (isOf(record, "/v1/accounts"))
        return record.record && m_reader.can(AccountAction::view, *record.record);
    if (isOf(record, "/v1/attachments"))
        return record.record && ReceiptAccess::find(m_connection, m_companyID, m_reader, *record.record);
    if (isOf(record, "/v1/templates"))
        return showsTemplate(record);
    if (isOf(record, "/v1/capital"))
        return MemberRights::canSeeCapital(m_reader);
    if (isOf(record, "/v1/dividends"))
        return MemberRights::canSeeDividends(m_reader);
    if (isOf(record, "/v1/members") || isOf(record, "/v1/invites") || record.kind == AuditKind::memberJoined ||
        record.kind == AuditKind::memberRightsChanged)
        return MemberRights::canManage(m_reader);
    return isOpenToOwners(record);
}

}
