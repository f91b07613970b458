#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/EntryReference.h"
#include "LedgerService/Storage/Rows/Entries/AccountSetRepository.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"
#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr Columns entryColumns{
    column("e.sequence", &RecordedEntry::sequence),
    column("e.id", [](auto& row) -> auto& { return row.entry.id; }),
    column("e.kind", [](auto& row) -> auto& { return row.entry.kind; }),
    column("e.date", [](auto& row) -> auto& { return row.entry.date; }),
    column("e.note", [](auto& row) -> auto& { return row.entry.note; }),
    column("e.created_at", [](auto& row) -> auto& { return row.entry.createdAt; }),
    column("e.member_id", [](auto& row) -> auto& { return row.entry.memberID; }),
    column("e.category_id", [](auto& row) -> auto& { return row.entry.categoryID; }),
    column("e.reversal_of", [](auto& row) -> auto& { return row.entry.reversalOf; }),
    column("e.original_transaction_id", [](auto& row) -> auto& { return row.entry.originalTransactionID; }),
    column("e.external_reference", [](auto& row) -> auto& { return row.entry.externalReference; }),
    column("e.transfer_purpose", [](auto& row) -> auto& { return row.entry.transferPurpose; }),
    column("e.distribution_kind", [](auto& row) -> auto& { return row.entry.distributionKind; }),
    column("e.participant_name", [](auto& row) -> auto& { return row.entry.participantName; }),
    column("e.dividend_movement_id", [](auto& row) -> auto& { return row.entry.dividendMovementID; }),
    column("e.capital_contribution_id", [](auto& row) -> auto& { return row.entry.capitalContributionID; }),
};

constexpr Columns legColumns{column("account_id", &LedgerLeg::accountID), column("currency", &LedgerLeg::currency),
                             column("amount_minor", &LedgerLeg::amountMinor)};

/// Entries beside each of their legs: one ordered pass reads any number of entries.
const auto selectEntryAndLeg = entryColumns.select(R"sql(,
           (SELECT r.id FROM entries r WHERE r.company_id = e.company_id AND r.reversal_of = e.id),
           l.account_id, l.currency, l.amount_minor
    FROM entries e JOIN legs l ON l.company_id = e.company_id AND l.sequence = e.sequence)sql");

const std::string selectEntry = fmt::format(R"sql({}
    WHERE e.company_id = :company AND e.id = :entry
    ORDER BY l.position
)sql",
                                            selectEntryAndLeg);

const std::string selectBetween = fmt::format(R"sql({}
    WHERE e.company_id = :company AND e.sequence > :after AND e.sequence <= :last
    ORDER BY e.sequence, l.position
)sql",
                                              selectEntryAndLeg);

constexpr auto selectReceipts = R"sql(
    SELECT id FROM attachments WHERE company_id = :company AND transaction_id = :entry ORDER BY position
)sql";

constexpr auto selectReceiptsBetween = R"sql(
    SELECT e.sequence, a.id
    FROM entries e JOIN attachments a ON a.company_id = e.company_id AND a.transaction_id = e.id
    WHERE e.company_id = :company AND e.sequence > :after AND e.sequence <= :last
    ORDER BY e.sequence, a.position
)sql";

/// Entries that are asked for by one statement; fewer are asked for as so many, so that there is one statement.
constexpr std::size_t sightsAtOnce = 100;

std::string sightName(std::size_t at)
{
    return fmt::format("entry{}", at);
}

std::string selectingSights()
{
    std::string names;
    for (std::size_t at = 0; at < sightsAtOnce; ++at)
        names += (at == 0 ? ":" : ", :") + sightName(at);
    return fmt::format(R"sql(
    SELECT e.id, e.capital_contribution_id, e.dividend_movement_id, l.account_id
    FROM entries e JOIN legs l ON l.company_id = e.company_id AND l.sequence = e.sequence
    WHERE e.company_id = :company AND e.id IN ({})
    ORDER BY e.sequence, l.position
)sql",
                       names);
}

const auto selectSights = selectingSights();

constexpr auto selectSequence = R"sql(
    SELECT sequence FROM entries WHERE company_id = :company AND id = :entry
)sql";

constexpr auto selectLastUpTo = R"sql(
    SELECT id FROM entries WHERE company_id = :company AND sequence <= :change ORDER BY sequence DESC LIMIT 1
)sql";

const auto insertEntry = entryColumns.insert("entries", {{"company_id", ":company"}});
const auto insertLeg = legColumns.insert(
    "legs",
    {{"company_id", ":company"}, {"sequence", ":sequence"}, {"position", ":position"}, {"opening", ":opening"}});

constexpr auto selectRefunded = R"sql(
    SELECT l.currency, -l.amount_minor
    FROM entries e JOIN legs l ON l.company_id = e.company_id AND l.sequence = e.sequence
    WHERE e.company_id = :company AND e.original_transaction_id = :original AND e.kind = 'refund'
        AND NOT EXISTS (SELECT 1 FROM entries r WHERE r.company_id = e.company_id AND r.reversal_of = e.id)
)sql";

constexpr auto selectReferenceUse = R"sql(
    SELECT l.account_id FROM entries e JOIN legs l ON l.company_id = e.company_id AND l.sequence = e.sequence
    WHERE e.company_id = :company AND lower(e.external_reference) = :folded
        AND e.kind = 'refund' AND e.external_reference IS NOT NULL
        AND NOT EXISTS (SELECT 1 FROM entries r WHERE r.company_id = e.company_id AND r.reversal_of = e.id)
)sql";

constexpr auto selectEarliestDay = R"sql(
    SELECT earliest_day FROM companies WHERE id = :company
)sql";

constexpr auto selectActiveOpenings = R"sql(
    SELECT e.id
    FROM legs l JOIN entries e ON e.company_id = l.company_id AND e.sequence = l.sequence
    WHERE l.company_id = :company AND l.account_id = :account AND l.currency = :currency AND l.opening = 1
        AND NOT EXISTS (SELECT 1 FROM entries r WHERE r.company_id = e.company_id AND r.reversal_of = e.id)
    ORDER BY e.sequence
)sql";

/// Takes entries out of a query with the columns of `selectEntryAndLeg`, ordered by sequence and leg.
std::vector<RecordedEntry> entriesOf(Query& query)
{
    std::vector<RecordedEntry> entries;
    RowReader<RecordedEntry, decltype(entryColumns)> entry{query, entryColumns};
    std::optional<std::string> reversedBy;
    query.into(reversedBy);
    RowReader<LedgerLeg, decltype(legColumns)> leg{query, legColumns};
    while (query.next()) {
        auto& row = entry.record();
        if (entries.empty() || entries.back().sequence != row.sequence) {
            entries.push_back(std::exchange(row, {}));
            entries.back().entry.reversedBy = reversedBy;
        }
        entries.back().entry.legs.push_back(leg.record());
    }
    return entries;
}

std::vector<RecordedEntry> withoutReceipts(Connection& connection, std::string_view companyID, std::int64_t sequence,
                                           std::int64_t last)
{
    Query query{connection, selectBetween};
    query.bind("company", companyID).bind("after", sequence).bind("last", last);
    return entriesOf(query);
}

std::int64_t sequenceOf(Connection& connection, std::string_view companyID, std::string_view entryID)
{
    std::int64_t sequence = 0;
    Query query{connection, selectSequence};
    query.bind("company", companyID).bind("entry", entryID).into(sequence).next();
    return sequence;
}

void insertRows(Connection& connection, std::string_view companyID, std::int64_t sequence,
                const LedgerTransaction& entry)
{
    Query row{connection, insertEntry};
    entryColumns.bind(row.bind("company", companyID), RecordedEntry{sequence, entry});
    row.run();
    for (std::size_t at = 0; at < entry.legs.size(); ++at) {
        Query leg{connection, insertLeg};
        legColumns.bind(leg.bind("company", companyID).bind("sequence", sequence), entry.legs[at]);
        leg.bind("position", static_cast<int>(at)).bind("opening", entry.kind == EntryKind::opening).run();
    }
}

/// One that was recorded.
LedgerTransaction recorded(Connection& connection, std::string_view companyID, std::string_view entryID)
{
    return promised(EntryRepository::find(connection, companyID, entryID),
                    "only an entry that is recorded is renewed and gets receipts");
}

/// Has the fragment of a recorded entry say what its rows say.
void renewFragment(Connection& connection, std::string_view companyID, const CompanyState& state,
                   std::string_view entryID)
{
    const auto entry = recorded(connection, companyID, entryID);
    FragmentRepository::renew(connection, companyID, state, sequenceOf(connection, companyID, entryID), entry);
}

std::vector<std::string> idsOf(Query& query)
{
    std::vector<std::string> ids;
    std::string id;
    query.into(id);
    while (query.next())
        ids.push_back(id);
    return ids;
}

}

std::optional<LedgerTransaction> EntryRepository::find(Connection& connection, std::string_view companyID,
                                                       std::string_view entryID)
{
    Query query{connection, selectEntry};
    query.bind("company", companyID).bind("entry", entryID);
    auto entries = entriesOf(query);
    if (entries.empty())
        return std::nullopt;
    auto& entry = entries.front().entry;
    Query receipts{connection, selectReceipts};
    receipts.bind("company", companyID).bind("entry", entryID);
    entry.attachmentIDs = idsOf(receipts);
    return std::move(entry);
}

std::vector<EntrySight> EntryRepository::sights(Connection& connection, std::string_view companyID,
                                                std::span<const std::string> ids)
{
    std::vector<EntrySight> found;
    for (; !ids.empty(); ids = ids.subspan(std::min(sightsAtOnce, ids.size()))) {
        std::string id;
        std::string accountID;
        std::optional<std::string> contribution;
        std::optional<std::string> movement;
        Query query{connection, selectSights};
        query.bind("company", companyID).into(id).into(contribution).into(movement).into(accountID);
        for (std::size_t at = 0; at < sightsAtOnce; ++at)
            query.bind(sightName(at), ids[std::min(at, ids.size() - 1)]);
        while (query.next()) {
            if (found.empty() || found.back().id != id)
                found.push_back({id, {}, contribution.has_value(), movement.has_value()});
            found.back().accountIDs.push_back(accountID);
        }
    }
    return found;
}

std::vector<LedgerTransaction> EntryRepository::all(Connection& connection, std::string_view companyID)
{
    std::vector<LedgerTransaction> entries;
    for (auto& each : withoutReceipts(connection, companyID, 0, std::numeric_limits<std::int64_t>::max()))
        entries.push_back(std::move(each.entry));
    return entries;
}

std::vector<RecordedEntry> EntryRepository::between(Connection& connection, std::string_view companyID,
                                                    std::int64_t sequence, std::int64_t last)
{
    auto entries = withoutReceipts(connection, companyID, sequence, last);
    std::int64_t at = 0;
    std::string id;
    Query query{connection, selectReceiptsBetween};
    query.bind("company", companyID).bind("after", sequence).bind("last", last).into(at).into(id);
    auto each = entries.begin();
    while (query.next()) {
        const auto found = std::ranges::find(each, entries.end(), at, &RecordedEntry::sequence);
        if (found == entries.end())
            continue; // of an entry without legs: a damaged file, which is checked to its end
        each = found;
        each->entry.attachmentIDs.push_back(id);
    }
    return entries;
}

std::string EntryRepository::lastIDUpTo(Connection& connection, std::string_view companyID, std::int64_t change)
{
    std::string id;
    Query query{connection, selectLastUpTo};
    query.bind("company", companyID).bind("change", change).into(id).next();
    return id;
}

std::string EntryRepository::textAsRecorded(Connection& connection, std::string_view companyID,
                                            std::string_view entryID)
{
    const auto sequence = sequenceOf(connection, companyID, entryID);
    const auto state = CompanyHistory::state(connection, companyID);
    auto fragment = state ? FragmentRepository::find(connection, *state, sequence) : std::nullopt;
    if (!fragment)
        throw std::runtime_error("a command that was carried out names an entry that is not there");
    auto first = FragmentRepository::textAtFirst(connection, companyID, sequence);
    return std::move(first ? *first : fragment->text);
}

std::string EntryRepository::append(Connection& connection, std::string_view companyID, const LedgerTransaction& entry)
{
    const auto state = CompanyHistory::advanceByEntry(connection, companyID, entry.date);
    insertRows(connection, companyID, state.lastChange, entry);
    const auto set = AccountSetRepository::count(connection, companyID, entry,
                                                 {.entries = 1, .receipts = entry.attachmentIDs.size()});
    auto unreversed = entry; // books that are written whole know already what a later change will reverse
    unreversed.reversedBy.reset();
    auto text = FragmentRepository::insert(connection, state, set, state.lastChange, unreversed);
    AttachmentRepository::link(connection, companyID, entry.id, set, state.lastChange, entry.attachmentIDs);
    if (entry.reversalOf)
        renewFragment(connection, companyID, state, *entry.reversalOf);
    return text;
}

void EntryRepository::linkReceipts(Connection& connection, std::string_view companyID, std::string_view entryID,
                                   const std::vector<std::string>& attachmentIDs)
{
    const auto state = CompanyHistory::advance(connection, companyID);
    const auto entry = recorded(connection, companyID, entryID);
    const auto set = AccountSetRepository::count(connection, companyID, entry, {.receipts = attachmentIDs.size()});
    AttachmentRepository::link(connection, companyID, entryID, set, state.lastChange, attachmentIDs);
    renewFragment(connection, companyID, state, entryID);
}

MinorByCurrency EntryRepository::refunded(Connection& connection, std::string_view companyID,
                                          std::string_view originalID)
{
    MinorByCurrency total;
    std::string currency;
    std::int64_t amount = 0;
    Query query{connection, selectRefunded};
    query.bind("company", companyID).bind("original", originalID).into(currency).into(amount);
    // No overflow: each refund was accepted within what remained of the original.
    while (query.next())
        total[currency] += amount;
    return total;
}

bool EntryRepository::hasOpenRefunds(Connection& connection, std::string_view companyID, std::string_view originalID)
{
    return !refunded(connection, companyID, originalID).empty();
}

std::vector<std::string> EntryRepository::accountsWithReference(Connection& connection, std::string_view companyID,
                                                                std::string_view reference)
{
    Query query{connection, selectReferenceUse};
    query.bind("company", companyID).bind("folded", EntryReference::folded(reference));
    return idsOf(query);
}

std::vector<std::string> EntryRepository::activeOpeningIDs(Connection& connection, std::string_view companyID,
                                                           std::string_view accountID, std::string_view currency)
{
    Query query{connection, selectActiveOpenings};
    query.bind("company", companyID).bind("account", accountID).bind("currency", currency);
    return idsOf(query);
}

bool EntryRepository::touches(Connection& connection, std::string_view companyID, std::string_view accountID)
{
    const auto sets = AccountSetRepository::all(connection, companyID);
    return std::ranges::any_of(sets, [&](const AccountSet& set) {
        return set.entryCount > 0 && std::ranges::find(set.accountIDs, accountID) != set.accountIDs.end();
    });
}

std::optional<std::string> EntryRepository::earliestDay(Connection& connection, std::string_view companyID)
{
    std::optional<std::string> day;
    Query query{connection, selectEarliestDay};
    query.bind("company", companyID).into(day).next();
    return day;
}

}
