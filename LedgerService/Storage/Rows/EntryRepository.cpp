#include "LedgerService/Storage/Rows/EntryRepository.h"

#include <unordered_map>
#include <utility>

#include <fmt/core.h>

#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

/// An entry `e` beside each of its legs `l`: one ordered pass reads any number of entries.
constexpr std::string_view selectEntryAndLeg = R"sql(
    SELECT e.sequence, e.id, e.kind, e.date, e.note, e.created_at, e.member_id, e.category_id, e.reversal_of,
           e.original_transaction_id, e.external_reference, e.transfer_purpose, e.distribution_kind,
           e.participant_name, e.dividend_movement_id, e.capital_contribution_id,
           l.account_id, l.currency, l.amount_minor
    FROM entries e JOIN legs l ON l.company_id = e.company_id AND l.sequence = e.sequence
)sql";

const std::string selectEntry = fmt::format(R"sql({}
    WHERE e.company_id = :company AND e.id = :entry
    ORDER BY l.position
)sql",
                                            selectEntryAndLeg);

const std::string selectAll = fmt::format(R"sql({}
    WHERE e.company_id = :company
    ORDER BY e.sequence, l.position
)sql",
                                          selectEntryAndLeg);

/// The placeholder takes the named parameters of the accounts, separated by commas.
constexpr std::string_view whereTouching = R"sql(
    WHERE e.company_id = :company AND e.sequence IN
        (SELECT v.sequence FROM legs v WHERE v.company_id = :company AND v.account_id IN ({}))
    ORDER BY e.sequence, l.position
)sql";

constexpr auto selectReversal = R"sql(
    SELECT id FROM entries WHERE company_id = :company AND reversal_of = :entry
)sql";

constexpr auto selectReceipts = R"sql(
    SELECT id FROM attachments WHERE company_id = :company AND transaction_id = :entry ORDER BY position
)sql";

constexpr auto advanceSequence = R"sql(
    UPDATE companies SET last_sequence = last_sequence + 1 WHERE id = :company
)sql";

constexpr auto selectSequence = R"sql(
    SELECT last_sequence FROM companies WHERE id = :company
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
    WHERE e.company_id = :company AND e.external_reference = :reference AND e.kind = 'refund'
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
std::vector<LedgerTransaction> entriesOf(Query& query)
{
    std::vector<LedgerTransaction> entries;
    LedgerTransaction row;
    LedgerLeg leg;
    std::int64_t sequence = 0;
    std::int64_t last = 0;
    query.into(sequence).into(row.id).into(row.kind).into(row.date).into(row.note).into(row.createdAt);
    query.into(row.memberID).into(row.categoryID).into(row.reversalOf).into(row.originalTransactionID);
    query.into(row.externalReference).into(row.transferPurpose).into(row.distributionKind).into(row.participantName);
    query.into(row.dividendMovementID).into(row.capitalContributionID);
    query.into(leg.accountID).into(leg.currency).into(leg.amountMinor);
    while (query.next()) {
        if (sequence != last)
            entries.push_back(std::exchange(row, {}));
        entries.back().legs.push_back(std::exchange(leg, {}));
        last = sequence;
    }
    return entries;
}

/// An entry and its reversal lie on the same accounts, so whoever reads one reads the other.
void linkReversals(std::vector<LedgerTransaction>& entries)
{
    std::unordered_map<std::string_view, std::string_view> reversalOf;
    for (const auto& entry : entries) {
        if (entry.reversalOf)
            reversalOf.emplace(*entry.reversalOf, entry.id);
    }
    if (reversalOf.empty())
        return;
    for (auto& entry : entries) {
        if (const auto found = reversalOf.find(entry.id); found != reversalOf.end())
            entry.reversedBy.emplace(found->second);
    }
}

std::int64_t nextSequence(Connection& connection, std::string_view companyID)
{
    Query{connection, advanceSequence}.bind("company", companyID).run();
    std::int64_t sequence = 0;
    Query query{connection, selectSequence};
    query.bind("company", companyID).into(sequence).next();
    return sequence;
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
    auto& entry = entries.front();
    Query receipts{connection, selectReceipts};
    receipts.bind("company", companyID).bind("entry", entryID);
    entry.attachmentIDs = idsOf(receipts);
    Query reversal{connection, selectReversal};
    reversal.bind("company", companyID).bind("entry", entryID);
    if (auto ids = idsOf(reversal); !ids.empty())
        entry.reversedBy = std::move(ids.front());
    return std::move(entry);
}

std::vector<LedgerTransaction> EntryRepository::all(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectAll};
    query.bind("company", companyID);
    auto entries = entriesOf(query);
    linkReversals(entries);
    return entries;
}

std::vector<LedgerTransaction> EntryRepository::touching(Connection& connection, std::string_view companyID,
                                                         std::span<const std::string> accountIDs)
{
    if (accountIDs.empty())
        return {};
    std::string names;
    for (std::size_t at = 0; at < accountIDs.size(); ++at)
        names += fmt::format("{}:account{}", at == 0 ? "" : ", ", at);
    Query query{connection, std::string{selectEntryAndLeg} + fmt::format(fmt::runtime(whereTouching), names)};
    query.bind("company", companyID);
    for (std::size_t at = 0; at < accountIDs.size(); ++at)
        query.bind(fmt::format("account{}", at), accountIDs[at]);
    auto entries = entriesOf(query);
    linkReversals(entries);
    return entries;
}

void EntryRepository::append(Connection& connection, std::string_view companyID, const LedgerTransaction& entry)
{
    const auto sequence = nextSequence(connection, companyID);
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
