#include "LedgerService/Audit/AuditCheck.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <unordered_set>

#include <fmt/core.h>

#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectAuditedFrom = R"sql(
    SELECT audited_from FROM companies WHERE id = :company
)sql";

constexpr int recordsAtOnce = 10'000;
constexpr std::int64_t changesAtOnce = 20'000;

void eachRecord(Connection& connection, std::string_view scope, const std::function<void(const AuditRecord&)>& show)
{
    std::int64_t last = 0;
    for (auto records = AuditTrail::after(connection, scope, last, recordsAtOnce); !records.empty();
         records = AuditTrail::after(connection, scope, last, recordsAtOnce)) {
        for (const auto& each : records)
            show(each);
        last = records.back().number;
    }
}

/// The digests of entries that records tell, by the entry's id.
std::unordered_map<std::string, std::string> toldDigests(Connection& connection, std::string_view companyID)
{
    std::unordered_map<std::string, std::string> told;
    eachRecord(connection, companyID, [&](const AuditRecord& each) {
        if (each.digest)
            told.emplace(each.record.value_or(""), *each.digest);
    });
    return told;
}

/// The receipts that were linked after their entry was recorded, by the change that did.
std::unordered_map<std::string, std::int64_t> linkedChanges(Connection& connection, std::string_view companyID)
{
    std::unordered_map<std::string, std::int64_t> changes;
    for (const auto& each : AttachmentRepository::all(connection, companyID))
        changes.emplace(each.attachment.id, each.linkedChange);
    return changes;
}

}

std::vector<std::string> AuditCheck::brokenChain(Connection& connection, std::string_view scope)
{
    std::vector<std::string> found;
    std::string previous;
    std::int64_t expected = 1;
    eachRecord(connection, scope, [&](const AuditRecord& each) {
        if (each.number != expected)
            found.push_back(fmt::format("audit record {}: is missing, with those up to {}", expected, each.number - 1));
        else if (AuditTrail::chained(previous, scope, each) != each.chain)
            found.push_back(fmt::format("audit record {}: is not what was written", each.number));
        previous = each.chain;
        expected = each.number + 1;
    });
    return found;
}

std::vector<std::string> AuditCheck::brokenEntries(Connection& connection, std::string_view companyID)
{
    std::vector<std::string> found;
    std::int64_t auditedFrom = 0;
    Query{connection, selectAuditedFrom}.bind("company", companyID).into(auditedFrom).next();
    auto told = toldDigests(connection, companyID);
    const auto linked = linkedChanges(connection, companyID);
    const auto last = CompanyHistory::state(connection, companyID).value_or(CompanyState{}).lastChange;
    for (auto at = auditedFrom; at < last; at += changesAtOnce) {
        for (auto& [sequence, entry] :
             EntryRepository::between(connection, companyID, at, std::min(at + changesAtOnce, last))) {
            entry.reversedBy.reset();
            std::erase_if(entry.attachmentIDs, [&](const std::string& id) {
                const auto change = linked.find(id);
                return change != linked.end() && change->second != sequence;
            });
            const auto record = told.find(entry.id);
            if (record == told.end())
                found.push_back(fmt::format("entry {}: the audit trail does not tell of it", entry.id));
            else if (record->second != AuditTrail::digestOf(entry))
                found.push_back(fmt::format("entry {}: is not what the audit trail tells", entry.id));
            if (record != told.end())
                told.erase(record);
        }
    }
    for (const auto& [id, digest] : told)
        found.push_back(fmt::format("entry {}: is missing, the audit trail tells of it", id));
    return found;
}

}
