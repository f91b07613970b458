#include "LedgerService/Storage/Rows/EntryRepository.h"

#include <algorithm>
#include <limits>
#include <utility>

#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Rows/AccountSetRepository.h"
#include "LedgerService/Storage/Rows/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/FragmentRepository.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

/// An entry `e` beside each of its legs `l`: one ordered pass reads any number of entries.
constexpr std::string_view selectEntryAndLeg = R"sql(
    SELECT e.sequence, e.id, e.kind, e.date, e.note, e.created_at, e.member_id, e.category_id, e.reversal_of,
           e.original_transaction_id, e.external_reference, e.transfer_purpose, e.distribution_kind,
           e.participant_name, e.dividend_movement_id, e.capital_contribution_id,
           (SELECT r.id FROM entries r WHERE r.company_id = e.company_id AND r.reversal_of = e.id),
           l.account_id, l.currency, l.amount_minor
    FROM entries e JOIN legs l ON l.company_id = e.company_id AND l.sequence = e.sequence
)sql";

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

constexpr auto selectSequence = R"sql(
    SELECT sequence FROM entries WHERE company_id = :company AND id = :entry
)sql";

constexpr auto selectLastUpTo = R"sql(
    SELECT id FROM entries WHERE company_id = :company AND sequence <= :change ORDER BY sequence DESC LIMIT 1
)sql";

constexpr auto insertEntry = R"sql(
    INSERT INTO entries (company_id, sequence, id, kind, date, note, created_at, member_id, category_id, reversal_of,
                         original_transaction_id, external_reference, transfer_purpose, distribution_kind,
                         participant_name, dividend_movement_id, capital_contribution_id)
    VALUES (:company, :sequence, :id, :kind, :date, :note, :created, :member, :category, :reversal_of, :original,
            :reference, :purpose, :distribution, :participant, :movement, :contribution)
)sql";

constexpr auto insertLeg = R"sql(
    INSERT INTO legs (company_id, sequence, position, account_id, currency, amount_minor, opening)
    VALUES (:company, :sequence, :position, :account, :currency, :amount, :opening)
)sql";

constexpr auto selectRefunded = R"sql(
    SELECT l.currency, -l.amount_minor
    FROM entries e JOIN legs l ON l.company_id = e.company_id AND l.sequence = e.sequence
    WHERE e.company_id = :company AND e.original_transaction_id = :original AND e.kind = 'refund'
        AND NOT EXISTS (SELECT 1 FROM entries r WHERE r.company_id = e.company_id AND r.reversal_of = e.id)
)sql";

constexpr auto selectReferenceUse = R"sql(
    SELECT e.id FROM entries e
    WHERE e.company_id = :company AND lower(e.external_reference) = lower(:reference)
        AND e.kind = 'refund' AND e.external_reference IS NOT NULL
        AND NOT EXISTS (SELECT 1 FROM entries r WHERE r.company_id = e.company_id AND r.reversal_of = e.id)
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
    LedgerTransaction row;
    LedgerLeg leg;
    std::int64_t sequence = 0;
    std::int64_t last = 0;
    query.into(sequence).into(row.id).into(row.kind).into(row.date).into(row.note).into(row.createdAt);
    query.into(row.memberID).into(row.categoryID).into(row.reversalOf).into(row.originalTransactionID);
    query.into(row.externalReference).into(row.transferPurpose).into(row.distributionKind).into(row.participantName);
    query.into(row.dividendMovementID).into(row.capitalContributionID).into(row.reversedBy);
    query.into(leg.accountID).into(leg.currency).into(leg.amountMinor);
    while (query.next()) {
        if (sequence != last)
            entries.push_back({sequence, std::exchange(row, {})});
        entries.back().entry.legs.push_back(std::exchange(leg, {}));
        last = sequence;
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
    Query{connection, insertEntry}
        .bind("company", companyID)
        .bind("sequence", sequence)
        .bind("id", entry.id)
        .bind("kind", entry.kind)
        .bind("date", entry.date)
        .bind("note", entry.note)
        .bind("created", entry.createdAt)
        .bind("member", entry.memberID)
        .bind("category", entry.categoryID)
        .bind("reversal_of", entry.reversalOf)
        .bind("original", entry.originalTransactionID)
        .bind("reference", entry.externalReference)
        .bind("purpose", entry.transferPurpose)
        .bind("distribution", entry.distributionKind)
        .bind("participant", entry.participantName)
        .bind("movement", entry.dividendMovementID)
        .bind("contribution", entry.capitalContributionID)
        .run();
    for (std::size_t at = 0; at < entry.legs.size(); ++at)
        Query{connection, insertLeg}
            .bind("company", companyID)
            .bind("sequence", sequence)
            .bind("position", static_cast<int>(at))
            .bind("account", entry.legs[at].accountID)
            .bind("currency", entry.legs[at].currency)
            .bind("amount", entry.legs[at].amountMinor)
            .bind("opening", entry.kind == EntryKind::opening)
            .run();
}

/// Has the fragment of a recorded entry say what its rows say.
void renewFragment(Connection& connection, std::string_view companyID, const CompanyState& state,
                   std::string_view entryID)
{
    const auto entry = EntryRepository::find(connection, companyID, entryID);
    require(entry.has_value(), "only a recorded entry is renewed");
    FragmentRepository::renew(connection, companyID, state, sequenceOf(connection, companyID, entryID), *entry);
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

void EntryRepository::append(Connection& connection, std::string_view companyID, const LedgerTransaction& entry)
{
    const auto state = CompanyHistory::advance(connection, companyID);
    insertRows(connection, companyID, state.lastChange, entry);
    const auto set = AccountSetRepository::idOf(connection, companyID, entry);
    AccountSetRepository::count(connection, companyID, set, 1, entry.attachmentIDs.size());
    FragmentRepository::insert(connection, state, set, state.lastChange, entry);
    AttachmentRepository::link(connection, companyID, entry.id, set, state.lastChange, entry.attachmentIDs);
    if (entry.reversalOf)
        renewFragment(connection, companyID, state, *entry.reversalOf);
}

void EntryRepository::linkReceipts(Connection& connection, std::string_view companyID, std::string_view entryID,
                                   const std::vector<std::string>& attachmentIDs)
{
    const auto state = CompanyHistory::advance(connection, companyID);
    const auto entry = find(connection, companyID, entryID);
    require(entry.has_value(), "receipts are linked to an entry that is recorded");
    const auto set = AccountSetRepository::idOf(connection, companyID, *entry);
    AttachmentRepository::link(connection, companyID, entryID, set, state.lastChange, attachmentIDs);
    AccountSetRepository::count(connection, companyID, set, 0, attachmentIDs.size());
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

bool EntryRepository::isReferenceUsed(Connection& connection, std::string_view companyID, std::string_view reference)
{
    Query query{connection, selectReferenceUse};
    query.bind("company", companyID).bind("reference", reference);
    return !idsOf(query).empty();
}

std::vector<std::string> EntryRepository::activeOpeningIDs(Connection& connection, std::string_view companyID,
                                                           std::string_view accountID, std::string_view currency)
{
    Query query{connection, selectActiveOpenings};
    query.bind("company", companyID).bind("account", accountID).bind("currency", currency);
    return idsOf(query);
}

}
