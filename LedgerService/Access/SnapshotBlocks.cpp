#include "LedgerService/Access/SnapshotBlocks.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_set>
#include <utility>

#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// How much is made at a time.
struct Pace {
    std::size_t blockBytes;     // a block ends when it has reached this size
    std::int64_t changesAtOnce; // whose receipts one query takes
};

/// A client that asks and does not read holds a block or two. So the first ones, which mostly go to the buffers of the
/// system, are small; a client that has taken this much is seen to read.
constexpr Pace first{.blockBytes = std::size_t{64} * 1024, .changesAtOnce = 1024};
constexpr Pace further{.blockBytes = std::size_t{256} * 1024, .changesAtOnce = 4096};
constexpr std::size_t seenToRead = std::size_t{4} * 1024 * 1024;

/// Fragments taken by one query.
constexpr int fragmentsAtOnce = 1024;

const Pace& paceAfter(std::size_t bytes)
{
    return bytes < seenToRead ? first : further;
}

}

VisibleSets::VisibleSets(const std::vector<AccountSet>& sets, const std::vector<Account>& visible)
{
    std::unordered_set<std::string_view> seen;
    for (const auto& account : visible)
        seen.insert(account.id);
    for (const auto& set : sets) {
        if (std::ranges::none_of(set.accountIDs, [&](const std::string& id) { return seen.contains(id); }))
            continue;
        const auto at = static_cast<std::size_t>(set.id);
        m_visible.resize(std::max(m_visible.size(), at + 1));
        m_visible[at] = true;
        m_entryCount += set.entryCount;
        m_receiptCount += set.receiptCount;
    }
}

bool VisibleSets::contains(int set) const
{
    const auto at = static_cast<std::size_t>(set);
    return at < m_visible.size() && m_visible[at];
}

AttachmentView SnapshotScope::receiptsAfter(std::int64_t change, std::int64_t last) const
{
    return {.companyID = companyID,
            .memberID = memberID,
            .after = change,
            .last = last,
            .asOf = state.lastChange,
            .seesEntriesOn = [this](int set) { return sets.contains(set); }};
}

void JsonElements::add(std::string_view element)
{
    if (std::exchange(m_any, true))
        m_text += ',';
    m_text += element;
}

void JsonElements::add(std::string_view entry, const EntryDisclosure& disclosure)
{
    const auto other = disclosure.instead(entry);
    add(other ? *other : entry);
}

SnapshotBlocks::SnapshotBlocks(Database& database, SnapshotScope scope, std::string tail)
    : m_database(database), m_scope(std::move(scope)), m_tail(std::move(tail))
{
}

std::string SnapshotBlocks::next()
{
    if (m_place.stage == Stage::done)
        return {};
    const auto loan = m_database.borrow();
    auto block = Anew::onConflict([&, begin = m_place] {
        m_place = begin;
        return make(*loan);
    });
    m_bytes += block.size();
    return block;
}

std::string SnapshotBlocks::make(Connection& connection)
{
    const auto blockBytes = paceAfter(m_bytes).blockBytes;
    std::string block;
    block.reserve(blockBytes + blockBytes / 2);
    const Transaction transaction{connection, Transaction::Mode::reading};
    requireCompany(connection);
    while (m_place.stage == Stage::entries && block.size() < blockBytes)
        addEntries(connection, block);
    while (m_place.stage == Stage::receipts && block.size() < blockBytes)
        addReceipts(connection, block);
    return block;
}

/// A demonstration may be removed while somebody reads it. What is left of it is not the whole then, and its number,
/// by which its entries are found, may be another company's already.
void SnapshotBlocks::requireCompany(Connection& connection) const
{
    const auto now = CompanyHistory::state(connection, m_scope.companyID);
    if (!now || now->number != m_scope.state.number)
        throw std::runtime_error("the company is gone");
}

void SnapshotBlocks::addEntries(Connection& connection, std::string& block)
{
    const auto& state = m_scope.state;
    const auto blockBytes = paceAfter(m_bytes).blockBytes;
    const auto renewed = FragmentRepository::textsBefore(connection, m_scope.companyID, state.lastChange);
    JsonElements elements{block, m_place.any};
    const bool more = FragmentRepository::visit(
        connection, state, m_place.at, state.lastChange, fragmentsAtOnce, [&](const EntryFragment& fragment) {
            m_place.at = fragment.sequence;
            if (!m_scope.sets.contains(fragment.accountSet))
                return true;
            const auto earlier = renewed.find(fragment.sequence);
            elements.add(earlier == renewed.end() ? fragment.text : earlier->second, m_scope.disclosure);
            return block.size() < blockBytes;
        });
    if (more)
        return;
    block += R"(],"attachments":[)";
    m_place.stage = Stage::receipts;
    m_place.at = -1;
    m_place.any = false;
}

void SnapshotBlocks::addReceipts(Connection& connection, std::string& block)
{
    const auto last = std::min(m_place.at + paceAfter(m_bytes).changesAtOnce, m_scope.state.lastChange);
    JsonElements elements{block, m_place.any};
    for (const auto& each : AttachmentRepository::seenIn(connection, m_scope.receiptsAfter(m_place.at, last)))
        elements.add(each);
    m_place.at = last;
    if (last < m_scope.state.lastChange)
        return;
    block += m_tail;
    m_place.stage = Stage::done;
}

}
