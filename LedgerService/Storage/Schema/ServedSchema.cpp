#include "LedgerService/Storage/Schema/ServedSchema.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/core.h>
#include <fmt/ranges.h>

#include "LedgerService/Storage/Schema/NewestSchema.h"
#include "LedgerService/Storage/Schema/TableText.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/LetterCase.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

using ServedSchema::Objects;

// Every table with each of its columns and with each constraint of it, in a row of its own.
constexpr auto selectColumns = R"sql(
    SELECT table_name, column_name || ' ' || data_type || ' ' || COALESCE('default ' || column_default, '') || ' ' ||
        COALESCE('collate ' || collation_name, '') || CASE is_nullable WHEN 'NO' THEN ' not null' ELSE '' END
    FROM information_schema.columns WHERE table_schema = current_schema()
)sql";

constexpr auto selectConstraints = R"sql(
    SELECT t.relname, pg_get_constraintdef(c.oid)
    FROM pg_constraint c JOIN pg_class t ON t.oid = c.conrelid JOIN pg_namespace n ON n.oid = t.relnamespace
    WHERE n.nspname = current_schema() AND c.contype IN ('p', 'u', 'f')
)sql";

constexpr auto selectIndexes = R"sql(
    SELECT x.relname, replace(pg_get_indexdef(x.oid), current_schema() || '.', '')
    FROM pg_index i JOIN pg_class x ON x.oid = i.indexrelid JOIN pg_namespace n ON n.oid = x.relnamespace
    WHERE n.nspname = current_schema() AND NOT EXISTS (SELECT 1 FROM pg_constraint c WHERE c.conindid = x.oid)
)sql";

constexpr auto selectTriggers = R"sql(
    SELECT g.tgname, replace(pg_get_triggerdef(g.oid), current_schema() || '.', '') ||
        CASE g.tgenabled WHEN 'O' THEN '' ELSE ' switched off' END
    FROM pg_trigger g JOIN pg_class t ON t.oid = g.tgrelid JOIN pg_namespace n ON n.oid = t.relnamespace
    WHERE n.nspname = current_schema() AND NOT g.tgisinternal
)sql";

constexpr auto selectFunctions = R"sql(
    SELECT p.proname, p.prosrc FROM pg_proc p JOIN pg_namespace n ON n.oid = p.pronamespace
    WHERE n.nspname = current_schema()
)sql";

/// Without what the server adds or leaves out as it likes.
std::string plain(std::string_view written)
{
    auto text = LetterCase::lower(written);
    for (const std::string_view added : {"using btree", "::text", "collate \"c\"", "collate c"}) {
        for (auto at = text.find(added); at != std::string::npos; at = text.find(added))
            text.erase(at, added.size());
    }
    std::erase_if(text, [](char each) { return std::string_view{" \n\t()\""}.find(each) != std::string_view::npos; });
    return text;
}

using Parts = std::set<std::string>;
using Tables = std::map<std::string, Parts>;

/// Takes `words` out of the text, when they are there.
bool takeOut(std::string& text, std::string_view words)
{
    const auto at = text.find(words);
    if (at != std::string::npos)
        text.erase(at, words.size());
    return at != std::string::npos;
}

/// A column with the constraints that its own line says.
void addColumn(Parts& parts, std::string item, const std::vector<std::string>& key)
{
    const auto name = item.substr(0, item.find(' '));
    if (const auto at = item.find("REFERENCES"); at != std::string::npos) {
        parts.insert(plain(fmt::format("FOREIGN KEY ({}) {}", name, item.substr(at))));
        item.resize(at);
    }
    if (takeOut(item, "PRIMARY KEY"))
        parts.insert(plain(fmt::format("PRIMARY KEY ({})", name)));
    if (takeOut(item, "UNIQUE"))
        parts.insert(plain(fmt::format("UNIQUE ({})", name)));
    const bool filled = takeOut(item, "NOT NULL") || std::ranges::find(key, name) != key.end();
    parts.insert(plain(item) + (filled ? "notnull" : ""));
}

Parts partsOf(const std::string& statement)
{
    Parts parts;
    const auto key = TableText::key(statement);
    for (const auto& item : TableText::items(statement)) {
        if (TableText::isConstraint(item))
            parts.insert(plain(item));
        else
            addColumn(parts, item, key);
    }
    return parts;
}

std::string joined(const Parts& parts)
{
    return fmt::format("{}", fmt::join(parts, ","));
}

/// The body of a function, between its marks.
std::string bodyOf(const std::string& statement)
{
    constexpr std::string_view mark = "$body$";
    const auto begin = statement.find(mark) + mark.size();
    return statement.substr(begin, statement.rfind(mark) - begin);
}

using Pairs = std::vector<std::pair<std::string, std::string>>;
Pairs pairsOf(Connection& connection, const char* select)
{
    Pairs pairs;
    std::pair<std::string, std::string> each;
    Query query{connection, select};
    query.into(each.first).into(each.second);
    while (query.next())
        pairs.push_back(each);
    return pairs;
}

}

Objects ServedSchema::expected(Connection& connection)
{
    Objects objects;
    for (const auto& [kind, name, statement] : NewestSchema::parts(connection.dialect())) {
        auto text = plain(kind == "function" ? bodyOf(statement) : statement);
        if (kind == "table")
            text = joined(partsOf(statement));
        objects.emplace(fmt::format("{} {}", kind, name), std::move(text));
    }
    return objects;
}

Objects ServedSchema::found(Connection& connection)
{
    Tables tables;
    for (const auto& [table, column] : pairsOf(connection, selectColumns))
        tables[table].insert(plain(column));
    for (const auto& [table, constraint] : pairsOf(connection, selectConstraints))
        tables[table].insert(plain(constraint));
    Objects objects;
    for (const auto& [table, parts] : tables)
        objects.emplace("table " + table, joined(parts));
    for (const auto& [kind, select] :
         {std::pair{"index", selectIndexes}, {"trigger", selectTriggers}, {"function", selectFunctions}}) {
        for (const auto& [name, text] : pairsOf(connection, select))
            objects.emplace(fmt::format("{} {}", kind, name), plain(text));
    }
    return objects;
}

}
