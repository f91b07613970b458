#include "LedgerService/Audit/AuditTrail.h"

#include <algorithm>
#include <limits>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr Columns columns{
    column("number", &AuditRecord::number),      column("at", &AuditRecord::at),
    column("member_id", &AuditRecord::memberID), column("origin", &AuditRecord::origin),
    column("kind", &AuditRecord::kind),          column("record", &AuditRecord::record),
    column("digest", &AuditRecord::digest),      column("state_before", &AuditRecord::before),
    column("state_after", &AuditRecord::after),  column("chain", &AuditRecord::chain),
};

const auto insertRecord = columns.insert("audit_records", {{"scope", ":scope"}});

constexpr auto selectLast = R"sql(
    SELECT number, chain FROM audit_records WHERE scope = :scope ORDER BY number DESC LIMIT 1
)sql";

const auto selectUpTo =
    columns.select("FROM audit_records WHERE scope = :scope AND at <= :stamp ORDER BY number DESC LIMIT 1");

const auto selectAfter =
    columns.select("FROM audit_records WHERE scope = :scope AND number > :number ORDER BY number LIMIT :limit");

const auto selectPage = columns.select(R"sql(
    FROM audit_records WHERE scope = :scope AND number < :below AND number >= :lowest
        AND (:member = '' OR member_id = :member) AND (:kind = '' OR kind = :kind)
        AND (:record = '' OR record = :record) AND (:day = '' OR substr(at, 1, 10) = :day)
    ORDER BY number DESC LIMIT :limit
)sql");

constexpr auto selectScopes = R"sql(
    SELECT DISTINCT scope FROM audit_records ORDER BY scope
)sql";

constexpr auto beginAudit = R"sql(
    UPDATE companies SET audited_from = last_sequence WHERE id = :company
)sql";

/// Records that one page looks at.
constexpr std::int64_t mostLookedAt = 50'000;

/// So much of what stood before and after ends a page: it is held in memory until it is sent.
constexpr std::size_t fullPage = std::size_t{1} << 20;

std::size_t sizeOf(const AuditRecord& record)
{
    return record.before.value_or("").size() + record.after.value_or("").size();
}

/// Stands for what is too long to be kept: how long it was, and a digest that it can be compared by.
struct LeftOut {
    std::int64_t omittedBytes = 0;
    std::string digest;
};
BOOST_DESCRIBE_STRUCT(LeftOut, (), (omittedBytes, digest))

void shorten(std::optional<std::string>& told)
{
    if (told && told->size() > AuditTrail::mostTold)
        told = Json::encode(
            LeftOut{static_cast<std::int64_t>(told->size()), AuditTrail::digestOf(std::string_view{*told})});
}

/// A field with its length, so that no two records read alike.
void add(std::string& text, std::string_view field)
{
    text += std::to_string(field.size());
    text += ':';
    text += field;
    text += ',';
}

void add(std::string& text, const std::optional<std::string>& field)
{
    if (field)
        add(text, std::string_view{*field});
    else
        text += "-,";
}

}

void AuditTrail::append(Connection& connection, std::string_view scope, AuditRecord record)
{
    std::string previous;
    record.number = 0;
    Query{connection, selectLast}.bind("scope", scope).into(record.number).into(previous).next();
    record.number += 1;
    for (auto* const told : {&record.before, &record.after})
        shorten(*told);
    record.chain = chained(previous, scope, record);
    Query query{connection, insertRecord};
    columns.bind(query.bind("scope", scope), record);
    query.run();
}

std::string AuditTrail::chained(std::string_view previous, std::string_view scope, const AuditRecord& record)
{
    std::string text;
    add(text, previous);
    add(text, scope);
    text += std::to_string(record.number) + ',';
    add(text, std::string_view{record.at});
    add(text, record.memberID);
    add(text, std::string_view{record.origin});
    add(text, std::string_view{record.kind});
    for (const auto* field : {&record.record, &record.digest, &record.before, &record.after})
        add(text, *field);
    return Random::shortDigest(text);
}

std::string AuditTrail::digestOf(const LedgerTransaction& entry)
{
    return digestOf(Json::encode(entry));
}

std::string AuditTrail::digestOf(std::string_view entryText)
{
    return Random::shortDigest(entryText);
}

AuditPage AuditTrail::page(Connection& connection, std::string_view scope, const AuditFilter& filter)
{
    AuditPage page;
    std::int64_t last = 0;
    std::string chain;
    Query{connection, selectLast}.bind("scope", scope).into(last).into(chain).next();
    const auto below = filter.below > 0 ? std::min(filter.below, last + 1) : last + 1;
    const auto lowest = std::max<std::int64_t>(below - mostLookedAt, 1);
    Query query{connection, selectPage};
    query.bind("scope", scope).bind("below", below).bind("lowest", lowest).bind("limit", filter.limit);
    query.bind("member", filter.memberID).bind("kind", filter.kind).bind("record", filter.record);
    query.bind("day", filter.day);
    RowReader<AuditRecord, decltype(columns)> reader{query, columns};
    std::size_t size = 0;
    while (size < fullPage && query.next()) {
        page.records.push_back(std::move(reader.record()));
        size += sizeOf(page.records.back());
    }
    const bool full = size >= fullPage || static_cast<int>(page.records.size()) == filter.limit;
    page.next = full ? page.records.back().number : lowest;
    if (page.next <= 1)
        page.next = 0;
    return page;
}

std::optional<AuditRecord> AuditTrail::lastUpTo(Connection& connection, std::string_view scope, std::string_view stamp)
{
    Query query{connection, selectUpTo};
    query.bind("scope", scope).bind("stamp", stamp);
    return recordOf<AuditRecord>(query, columns);
}

std::vector<AuditRecord> AuditTrail::after(Connection& connection, std::string_view scope, std::int64_t number,
                                           int limit)
{
    Query query{connection, selectAfter};
    query.bind("scope", scope).bind("number", number).bind("limit", limit);
    return recordsOf<AuditRecord>(query, columns);
}

std::vector<std::string> AuditTrail::scopes(Connection& connection)
{
    std::vector<std::string> scopes;
    std::string scope;
    Query query{connection, selectScopes};
    query.into(scope);
    while (query.next())
        scopes.push_back(scope);
    return scopes;
}

void AuditTrail::begin(Connection& connection, std::string_view companyID)
{
    Query{connection, beginAudit}.bind("company", companyID).run();
}

}
