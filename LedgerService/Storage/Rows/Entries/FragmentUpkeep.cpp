#include "LedgerService/Storage/Rows/Entries/FragmentUpkeep.h"

#include <algorithm>
#include <functional>
#include <map>
#include <unordered_map>

#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Storage/Rows/Entries/AccountSetRepository.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectOutdated = R"sql(
    SELECT id FROM companies WHERE fragments_shape <> :shape
)sql";

constexpr auto updateShape = R"sql(
    UPDATE companies SET fragments_shape = :shape WHERE id = :company
)sql";

constexpr auto updateReceiptSets = R"sql(
    UPDATE attachments SET account_set = :set WHERE company_id = :company AND transaction_id = :entry
)sql";

/// Changes whose entries are held in memory at a time.
constexpr std::int64_t stride = 50'000;

std::vector<std::string> outdated(Connection& connection)
{
    std::vector<std::string> ids;
    std::string id;
    Query query{connection, selectOutdated};
    query.bind("shape", FragmentRepository::shape()).into(id);
    while (query.next())
        ids.push_back(id);
    return ids;
}

void eachEntry(Connection& connection, std::string_view companyID, std::int64_t last,
               const std::function<void(const RecordedEntry&)>& visit)
{
    for (std::int64_t at = 0; at < last; at += stride) {
        for (const auto& each : EntryRepository::between(connection, companyID, at, std::min(at + stride, last)))
            visit(each);
    }
}

void rebuild(Connection& connection, const std::string& companyID)
{
    const auto state = CompanyHistory::advance(connection, companyID);
    FragmentRepository::removeAll(connection, companyID, state);
    AccountSetRepository::removeAll(connection, companyID);
    eachEntry(connection, companyID, state.lastChange, [&](const RecordedEntry& each) {
        const auto set = AccountSetRepository::count(connection, companyID, each.entry,
                                                     {.entries = 1, .receipts = each.entry.attachmentIDs.size()});
        FragmentRepository::insert(connection, state, set, each.sequence, each.entry);
        if (!each.entry.attachmentIDs.empty())
            Query{connection, updateReceiptSets}
                .bind("set", set)
                .bind("company", companyID)
                .bind("entry", each.entry.id)
                .run();
    });
    Query{connection, updateShape}.bind("shape", FragmentRepository::shape()).bind("company", companyID).run();
}

std::vector<std::string> accountsOf(const LedgerTransaction& entry)
{
    std::vector<std::string> ids;
    ids.reserve(entry.legs.size());
    for (const auto& leg : entry.legs)
        ids.push_back(leg.accountID);
    std::ranges::sort(ids);
    ids.erase(std::ranges::unique(ids).begin(), ids.end());
    return ids;
}

/// Goes over rows and fragments together; each check appends what it finds.
class Comparison {
public:
    Comparison(Connection& connection, std::string_view companyID)
        : m_connection(connection), m_companyID(companyID), m_state(stateOf(connection, companyID))
    {
        for (auto& set : AccountSetRepository::all(connection, companyID))
            m_sets.emplace(set.id, std::move(set));
        for (auto& receipt : AttachmentRepository::all(connection, companyID))
            m_receipts.emplace(receipt.attachment.id, std::move(receipt));
    }

    std::vector<std::string> run()
    {
        for (std::int64_t at = 0; at < m_state.lastChange; at += stride)
            compare(at, std::min(at + stride, m_state.lastChange));
        for (const auto& [id, set] : m_sets) {
            if (set != m_counted[id])
                m_found.push_back(fmt::format("the count of entries on the accounts of set {} is not theirs", id));
        }
        for (const auto& [id, receipt] : m_receipts)
            compare(receipt);
        return std::move(m_found);
    }

private:
    using Renewal = FragmentRepository::EntryRenewal;

    static CompanyState stateOf(Connection& connection, std::string_view companyID)
    {
        return promised(CompanyHistory::state(connection, companyID), "only a company that exists is checked");
    }

    void compare(std::int64_t after, std::int64_t last)
    {
        std::map<std::int64_t, EntryFragment> fragments;
        FragmentRepository::visit(m_connection, m_state, after, last, static_cast<int>(stride),
                                  [&](const EntryFragment& each) {
                                      fragments.emplace(each.sequence, each);
                                      return true;
                                  });
        const auto renewals = FragmentRepository::renewals(m_connection, m_companyID, after, last);
        auto renewal = renewals.begin();
        for (const auto& each : EntryRepository::between(m_connection, m_companyID, after, last)) {
            compare(each.entry, fragments[each.sequence]);
            fragments.erase(each.sequence);
            renewal = std::ranges::lower_bound(renewal, renewals.end(), each.sequence, {}, &Renewal::sequence);
            for (; renewal != renewals.end() && renewal->sequence == each.sequence; ++renewal)
                compare(each.entry, *renewal);
        }
        for (const auto& [sequence, fragment] : fragments)
            m_found.push_back(fmt::format("change {}: a fragment of no entry", sequence));
    }

    void compare(const LedgerTransaction& entry, const EntryFragment& fragment)
    {
        if (fragment.text != Json::encode(entry))
            m_found.push_back(fmt::format("entry {}: snapshots show it otherwise than it was recorded", entry.id));
        const auto set = m_sets.find(fragment.accountSet);
        if (set == m_sets.end() || set->second.accountIDs != accountsOf(entry))
            m_found.push_back(fmt::format("entry {}: is not shown by the accounts that it touches", entry.id));
        auto& counted = m_counted[fragment.accountSet];
        counted.id = fragment.accountSet;
        counted.accountIDs = accountsOf(entry);
        counted.entryCount += 1;
        counted.receiptCount += static_cast<std::int64_t>(entry.attachmentIDs.size());
        m_setOf.emplace(entry.id, fragment.accountSet);
    }

    /// Before the change the entry was not yet reversed by it, nor had the receipts that came with it or later. Older
    /// demonstrations told from the first what was to be reversed.
    void compare(LedgerTransaction entry, const Renewal& renewal)
    {
        std::erase_if(entry.attachmentIDs, [&](const std::string& id) {
            const auto receipt = m_receipts.find(id);
            return receipt != m_receipts.end() && receipt->second.linkedChange >= renewal.change;
        });
        bool isThat = renewal.textBefore == Json::encode(entry);
        if (renewal.reversedAt >= renewal.change) {
            entry.reversedBy.reset();
            isThat = isThat || renewal.textBefore == Json::encode(entry);
        }
        if (!isThat)
            m_found.push_back(fmt::format("entry {}: what it said before change {} is not what was recorded", entry.id,
                                          renewal.change));
    }

    void compare(const StoredAttachment& receipt)
    {
        const auto& entryID = receipt.attachment.transactionID;
        const auto set = entryID ? m_setOf.find(*entryID) : m_setOf.end();
        if (entryID.has_value() != (receipt.linkedChange != 0) ||
            (entryID && (set == m_setOf.end() || set->second != receipt.accountSet)))
            m_found.push_back(fmt::format("receipt {}: is not shown with its entry", receipt.attachment.id));
    }

    Connection& m_connection;
    std::string_view m_companyID;
    CompanyState m_state;
    std::unordered_map<int, AccountSet> m_sets;
    std::unordered_map<int, AccountSet> m_counted;
    std::unordered_map<std::string, int> m_setOf; // entries
    std::map<std::string, StoredAttachment> m_receipts;
    std::vector<std::string> m_found;
};

}

void FragmentUpkeep::renewOutdated(Connection& connection)
{
    for (const auto& companyID : outdated(connection))
        rebuild(connection, companyID);
}

bool FragmentUpkeep::isNeeded(Connection& connection)
{
    return !outdated(connection).empty();
}

std::vector<std::string> FragmentUpkeep::broken(Connection& connection, std::string_view companyID)
{
    return Comparison{connection, companyID}.run();
}

}
