#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"

#include <limits>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto insertFragment = R"sql(
    INSERT INTO entry_fragments (key, account_set, text) VALUES (:key, :set, :text)
)sql";

constexpr auto updateFragment = R"sql(
    UPDATE entry_fragments SET text = :text WHERE key = :key
)sql";

constexpr auto selectFragments = R"sql(
    SELECT key, account_set, text FROM entry_fragments WHERE key > :after AND key <= :last ORDER BY key LIMIT :limit
)sql";

constexpr auto deleteFragments = R"sql(
    DELETE FROM entry_fragments WHERE key > :first AND key <= :last
)sql";

constexpr auto insertRenewal = R"sql(
    INSERT INTO entry_renewals (company_id, change, sequence, text_before)
    VALUES (:company, :change, :sequence, (SELECT text FROM entry_fragments WHERE key = :key))
    ON CONFLICT (company_id, change, sequence) DO NOTHING
)sql";

constexpr auto selectRenewed = R"sql(
    SELECT DISTINCT sequence FROM entry_renewals
    WHERE company_id = :company AND change > :change AND sequence <= :change ORDER BY sequence
)sql";

constexpr auto selectEarlierTexts = R"sql(
    SELECT sequence, text_before FROM entry_renewals
    WHERE company_id = :company AND change > :change AND sequence <= :change ORDER BY change
)sql";

constexpr auto selectRenewals = R"sql(
    SELECT r.sequence, r.change, r.text_before,
        COALESCE((SELECT x.sequence FROM entries x WHERE x.company_id = e.company_id AND x.reversal_of = e.id), 0)
    FROM entry_renewals r JOIN entries e ON e.company_id = r.company_id AND e.sequence = r.sequence
    WHERE r.company_id = :company AND r.sequence > :after AND r.sequence <= :last ORDER BY r.sequence, r.change
)sql";

constexpr auto selectFirstText = R"sql(
    SELECT text_before FROM entry_renewals
    WHERE company_id = :company AND sequence = :sequence ORDER BY change LIMIT 1
)sql";

constexpr auto deleteRenewals = R"sql(
    DELETE FROM entry_renewals WHERE company_id = :company
)sql";

/// A company's number stands above the entry's sequence, so that one ordered pass reads one company's fragments.
constexpr int sequenceBits = 40;
constexpr std::int64_t lastSequence = (std::int64_t{1} << sequenceBits) - 1;

std::int64_t keyOf(const CompanyState& state, std::int64_t sequence)
{
    return (state.number << sequenceBits) + sequence;
}

template <class Record>
void addFieldNames(std::string& names)
{
    boost::mp11::mp_for_each<Json::Detail::Fields<Record>>([&](auto field) { (names += field.name) += ' '; });
}

}

std::string FragmentRepository::shape()
{
    std::string names;
    addFieldNames<LedgerTransaction>(names);
    addFieldNames<LedgerLeg>(names);
    return Random::digest(names);
}

FragmentRepository::KeyRange FragmentRepository::keysOf(std::int64_t companyNumber)
{
    const CompanyState company{.number = companyNumber};
    return {.first = keyOf(company, 0), .last = keyOf(company, lastSequence)};
}

std::string FragmentRepository::insert(Connection& connection, const CompanyState& state, int accountSet,
                                       std::int64_t sequence, const LedgerTransaction& entry)
{
    auto text = Json::encode(entry);
    Query{connection, insertFragment}
        .bind("key", keyOf(state, sequence))
        .bind("set", accountSet)
        .bind("text", text)
        .run();
    return text;
}

void FragmentRepository::renew(Connection& connection, std::string_view companyID, const CompanyState& state,
                               std::int64_t sequence, const LedgerTransaction& entry)
{
    const auto key = keyOf(state, sequence);
    Query{connection, insertRenewal}
        .bind("company", companyID)
        .bind("change", state.lastChange)
        .bind("sequence", sequence)
        .bind("key", key)
        .run();
    Query{connection, updateFragment}.bind("text", Json::encode(entry)).bind("key", key).run();
}

std::optional<EntryFragment> FragmentRepository::find(Connection& connection, const CompanyState& state,
                                                      std::int64_t sequence)
{
    std::optional<EntryFragment> found;
    visit(connection, state, sequence - 1, sequence, 1, [&](const EntryFragment& fragment) {
        found = fragment;
        return true;
    });
    return found;
}

bool FragmentRepository::visit(Connection& connection, const CompanyState& state, std::int64_t sequence,
                               std::int64_t last, int limit, const Visitor& visitor)
{
    EntryFragment fragment;
    std::int64_t key = 0;
    Query query{connection, selectFragments};
    query.bind("after", keyOf(state, sequence)).bind("last", keyOf(state, last)).bind("limit", limit);
    query.into(key).into(fragment.accountSet).into(fragment.text);
    int count = 0;
    for (; query.next(); ++count) {
        fragment.sequence = key & lastSequence;
        if (!visitor(fragment))
            return true;
    }
    return count == limit;
}

std::vector<std::int64_t> FragmentRepository::renewedSince(Connection& connection, std::string_view companyID,
                                                           std::int64_t change)
{
    std::vector<std::int64_t> sequences;
    std::int64_t each = 0;
    Query query{connection, selectRenewed};
    query.bind("company", companyID).bind("change", change).into(each);
    while (query.next())
        sequences.push_back(each);
    return sequences;
}

std::unordered_map<std::int64_t, std::string>
FragmentRepository::textsBefore(Connection& connection, std::string_view companyID, std::int64_t change)
{
    std::unordered_map<std::int64_t, std::string> texts;
    std::int64_t sequence = 0;
    std::string text;
    Query query{connection, selectEarlierTexts};
    query.bind("company", companyID).bind("change", change).into(sequence).into(text);
    while (query.next())
        texts.emplace(sequence, text); // the first renewal since then tells it
    return texts;
}

std::vector<FragmentRepository::EntryRenewal> FragmentRepository::renewals(Connection& connection,
                                                                           std::string_view companyID,
                                                                           std::int64_t sequence, std::int64_t last)
{
    std::vector<EntryRenewal> all;
    EntryRenewal each;
    Query query{connection, selectRenewals};
    query.bind("company", companyID).bind("after", sequence).bind("last", last);
    query.into(each.sequence).into(each.change).into(each.textBefore).into(each.reversedAt);
    while (query.next())
        all.push_back(each);
    return all;
}

std::optional<std::string> FragmentRepository::textAtFirst(Connection& connection, std::string_view companyID,
                                                           std::int64_t sequence)
{
    std::string text;
    Query query{connection, selectFirstText};
    const bool found = query.bind("company", companyID).bind("sequence", sequence).into(text).next();
    return found ? std::optional{std::move(text)} : std::nullopt;
}

void FragmentRepository::removeAll(Connection& connection, std::string_view companyID, const CompanyState& state)
{
    Query{connection, deleteFragments}.bind("first", keyOf(state, 0)).bind("last", keyOf(state, lastSequence)).run();
    Query{connection, deleteRenewals}.bind("company", companyID).run();
}

}
