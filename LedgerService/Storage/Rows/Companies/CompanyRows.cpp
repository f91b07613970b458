#include "LedgerService/Storage/Rows/Companies/CompanyRows.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <utility>

#include <fmt/core.h>
#include <fmt/ranges.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Rows/Companies/ArrivalRepository.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/SnapshotKeys.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"
#include "LedgerService/Storage/Schema/NewestSchema.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

using NewestSchema::Table;

constexpr auto selectPeople = R"sql(
    SELECT id, email FROM users WHERE id IN (SELECT user_id FROM members WHERE company_id = :company) ORDER BY email
)sql";

constexpr auto selectNextNumber = R"sql(
    SELECT COALESCE(MAX(number), 0) + 1 FROM companies
)sql";

constexpr auto staying = std::to_array<std::string_view>({"sessions", "access_challenges"});

constexpr std::size_t rowsTogether = 50; // in one statement

using Row = std::vector<std::optional<std::string>>;

/// The rows of a table that belong to a company, and what becomes of each on the way.
struct Part {
    const Table& table;
    std::string where; // of its parameters; the first is the company where there is but one
    std::vector<std::pair<std::string, std::string>> values;
    std::function<bool(Row&)> change = nullptr; // false leaves the row out
};

const Table& tableOf(std::string_view name)
{
    const auto found = std::ranges::find(NewestSchema::tables(), name, &Table::name);
    require(found != NewestSchema::tables().end(), "the schema has the table");
    return *found;
}

std::size_t indexOf(const Table& table, std::string_view column)
{
    const auto found = std::ranges::find(table.columns, column);
    require(found != table.columns.end(), "the table has the column");
    return static_cast<std::size_t>(found - table.columns.begin());
}

bool isOfCompany(const Table& table)
{
    return std::ranges::find(table.columns, "company_id") != table.columns.end();
}

/// ":v0, :v1, :v2" from `first` on.
std::string parameters(std::size_t first, std::size_t count)
{
    std::vector<std::string> names;
    for (std::size_t at = first; at < first + count; ++at)
        names.push_back(fmt::format(":v{}", at));
    return fmt::format("{}", fmt::join(names, ", "));
}

/// The next rows after the one with this key; the first ones when it is empty.
std::vector<Row> page(Connection& from, const Part& part, const Row& after, std::size_t rowsAtOnce)
{
    const auto& [name, columns, key] = part.table;
    const auto keys = fmt::format("{}", fmt::join(key, ", "));
    const auto rest = after.empty() ? "" : fmt::format(" AND ({}) > ({})", keys, parameters(0, key.size()));
    const auto statement = fmt::format("SELECT {} FROM {} WHERE {}{} ORDER BY {} LIMIT {}", fmt::join(columns, ", "),
                                       name, part.where, rest, keys, rowsAtOnce);
    Query query{from, statement};
    for (const auto& [parameter, value] : part.values)
        query.bind(parameter, value);
    for (std::size_t at = 0; at < after.size(); ++at)
        query.bind(fmt::format("v{}", at), after[at]);
    Row row(columns.size());
    for (auto& each : row)
        query.into(each);
    std::vector<Row> rows;
    while (query.next())
        rows.push_back(row);
    return rows;
}

void insert(Connection& to, const Table& table, std::span<const Row> rows)
{
    std::vector<std::string> lines;
    lines.reserve(rows.size());
    for (std::size_t at = 0; at < rows.size(); ++at)
        lines.push_back(fmt::format("({})", parameters(at * table.columns.size(), table.columns.size())));
    const auto statement = fmt::format("INSERT INTO {} ({}) VALUES {}", table.name, fmt::join(table.columns, ", "),
                                       fmt::join(lines, ", "));
    Query query{to, statement};
    std::size_t at = 0;
    for (const auto& row : rows) {
        for (const auto& value : row)
            query.bind(fmt::format("v{}", at++), value);
    }
    query.run();
}

void insertAll(Connection& to, const Table& table, std::span<const Row> rows)
{
    for (; rows.size() >= rowsTogether; rows = rows.subspan(rowsTogether))
        insert(to, table, rows.first(rowsTogether));
    for (; !rows.empty(); rows = rows.subspan(1))
        insert(to, table, rows.first(1));
}

/// Rows go over in the order of their key, in which none refers to a later one of its table.
void copyRows(Connection& from, Connection& to, const Part& part, const CompanyRows::Copying& how)
{
    Row after;
    const auto next = [&] { return page(from, part, after, how.rowsAtOnce); };
    for (auto rows = next(); !rows.empty(); rows = next()) {
        after.clear();
        for (const auto& column : part.table.key)
            after.push_back(rows.back()[indexOf(part.table, column)]);
        if (part.change)
            std::erase_if(rows, [&](Row& row) { return !part.change(row); });
        insertAll(to, part.table, rows);
        how.between();
    }
}

std::function<bool(Row&)> renumbered(Connection& to, const Table& companies, const Arrival* arrival)
{
    std::int64_t number = 0;
    Query{to, selectNextNumber}.into(number).next();
    return [column = indexOf(companies, "number"), status = indexOf(companies, "approval_status"), number,
            arrival](Row& row) {
        row[column] = std::to_string(number);
        if (arrival)
            row[status] = arrival->status();
        return true;
    };
}

/// People whom the other database does not know yet; they find themselves in this company or in none.
std::function<bool(Row&)> newPeople(Connection& to, const Table& users, const std::string& companyID,
                                    const Arrival* arrival)
{
    return [&to, companyID, arrival, id = indexOf(users, "id"), current = indexOf(users, "current_company_id"),
            deactivated = indexOf(users, "deactivated_at")](Row& row) {
        if (row[current] != companyID)
            row[current].reset();
        if (arrival)
            row[deactivated] = arrival->markOfPeople() + row[deactivated].value_or("");
        return !UserRepository::find(to, *row[id]).has_value();
    };
}

/// Of people who have left the company, too.
std::function<bool(Row&)> ofKnownPeople(Connection& to, const Table& table)
{
    return
        [&to, user = indexOf(table, "user_id")](Row& row) { return UserRepository::find(to, *row[user]).has_value(); };
}

/// What is to be copied of a table at its turn; nothing when there is nothing, or not yet.
std::optional<Part> partOf(Connection& to, const Table& table, const std::string& companyID, const Arrival* arrival)
{
    Part part{.table = table, .where = "company_id = :company", .values = {{"company", companyID}}};
    if (table.name == "companies") {
        part.where = "id = :company";
        part.change = renumbered(to, table, arrival);
    } else if (table.name == "users") {
        part.where = "id IN (SELECT user_id FROM members WHERE company_id = :company)";
        part.change = newPeople(to, table, companyID, arrival);
    } else if (!isOfCompany(table) || CompanyRows::stays(table.name)) {
        return std::nullopt;
    } else if (table.name == "company_requests") {
        part.change = ofKnownPeople(to, table);
    }
    return part;
}

void copyFragments(Connection& from, Connection& to, const std::string& companyID, const CompanyRows::Copying& how)
{
    const auto there = promised(CompanyHistory::state(from, companyID), "what is copied is there");
    const auto here = promised(CompanyHistory::state(to, companyID), "the company was copied");
    const auto keys = FragmentRepository::keysOf(there.number);
    const auto moved = FragmentRepository::keysOf(here.number).first - keys.first;
    const auto& table = tableOf("entry_fragments");
    copyRows(from, to,
             {.table = table,
              .where = "key BETWEEN :first AND :last",
              .values = {{"first", std::to_string(keys.first)}, {"last", std::to_string(keys.last)}},
              .change =
                  [moved, key = indexOf(table, "key")](Row& row) {
                      row[key] = std::to_string(std::stoll(*row[key]) + moved);
                      return true;
                  }},
             how);
}

}

std::vector<std::string> CompanyRows::tables()
{
    std::vector<std::string> names;
    for (const auto& each : NewestSchema::tables()) {
        if (isOfCompany(each))
            names.push_back(each.name);
    }
    return names;
}

bool CompanyRows::stays(std::string_view table)
{
    return std::ranges::find(staying, table) != staying.end();
}

std::vector<std::string> CompanyRows::collisions(Connection& from, Connection& to, const std::string& companyID)
{
    std::vector<std::string> words;
    std::string id;
    std::string email;
    Query query{from, selectPeople};
    query.bind("company", companyID).into(id).into(email);
    while (query.next()) {
        if (const auto same = UserRepository::findByEmail(to, email); same && same->id != id)
            words.push_back(fmt::format("{} is the address of another person there", email));
        if (const auto same = UserRepository::find(to, id); same && same->email != email)
            words.push_back(fmt::format("{} has the id of {} there", email, same->email));
    }
    return words;
}

void CompanyRows::copy(Connection& from, Connection& to, const std::string& companyID, const Copying& how)
{
    const auto& company = tableOf("companies"); // it comes first: it tells whose rows the others are
    copyRows(from, to, promised(partOf(to, company, companyID, how.arrival), "a company has a row"), how);
    for (const auto& table : NewestSchema::tables()) {
        if (const auto part = partOf(to, table, companyID, how.arrival); part && &table != &company)
            copyRows(from, to, *part, how);
    }
    copyRows(from, to,
             {.table = tableOf("audit_records"), .where = "scope = :company", .values = {{"company", companyID}}}, how);
    copyFragments(from, to, companyID, how);
    SnapshotKeys::draw(to, companyID); // from here on the books may go another way than there
}

}
