#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "LedgerService/Storage/Sql/JsonColumn.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

/// One column of a table and where a record keeps it.
template <class Access>
struct Column {
    std::string_view name; // "id", or "m.id" where a query joins tables
    Access access;         // a pointer to the member, or a function from the record to the field
    bool written = true;   // false for what another table holds
};

template <class Access>
constexpr Column<Access> column(std::string_view name, Access access)
{
    return {name, access, true};
}

template <class Access>
constexpr Column<Access> foreignColumn(std::string_view name, Access access)
{
    return {name, access, false};
}

namespace Detail {

template <class Value>
inline constexpr bool isOptional = false;
template <class Value>
inline constexpr bool isOptional<std::optional<Value>> = true;

template <class Value>
inline constexpr bool isPlain = std::is_same_v<Value, std::string> || std::is_integral_v<Value>;
template <class Value>
inline constexpr bool isPlain<std::optional<Value>> = isPlain<Value>;

std::string selectText(const std::vector<std::string_view>& names, std::string_view rest);
std::string updateText(std::string_view table, const std::vector<std::string_view>& names, std::string_view where);
std::string insertText(std::string_view table, const std::vector<std::string_view>& names,
                       std::initializer_list<std::pair<std::string_view, std::string_view>> others);

/// Adds a column to the text of a row; its length stands first, so that no two rows have one text.
void appendStored(std::string& stored, std::string_view value);
void appendOptional(std::string& stored, const std::optional<std::string>& value);

/// "id" of "m.id".
constexpr std::string_view bare(std::string_view name)
{
    return name.substr(name.find('.') + 1);
}

}

/// What a record's rows consist of: said once for reading and for writing. A field that is no text, number or flag
/// stands as JSON in its column.
template <class... Access>
class Columns {
public:
    static constexpr std::size_t count = sizeof...(Access);

    constexpr explicit Columns(Column<Access>... columns) : m_columns(columns...) {}

    /// `rest` follows the columns' names: "FROM accounts WHERE …".
    [[nodiscard]] std::string select(std::string_view rest) const
    {
        std::vector<std::string_view> names;
        each([&](const auto& column) { names.push_back(column.name); });
        return Detail::selectText(names, rest);
    }

    /// An insert of all columns and of `others`, each of which has its SQL. A column's parameter bears its name.
    [[nodiscard]] std::string insert(std::string_view table,
                                     std::initializer_list<std::pair<std::string_view, std::string_view>> others) const
    {
        return Detail::insertText(table, written(), others);
    }

    /// An update of all columns where the condition holds.
    [[nodiscard]] std::string update(std::string_view table, std::string_view where) const
    {
        return Detail::updateText(table, written(), where);
    }

    template <class Record>
    void bind(Query& query, const Record& record) const
    {
        each([&](const auto& column) {
            if (column.written)
                bindValue(query, Detail::bare(column.name), std::invoke(column.access, record));
        });
    }

    template <class Visitor>
    constexpr void each(Visitor visit) const
    {
        std::apply([&](const auto&... column) { (visit(column), ...); }, m_columns);
    }

private:
    [[nodiscard]] std::vector<std::string_view> written() const
    {
        std::vector<std::string_view> names;
        each([&](const auto& column) {
            if (column.written)
                names.push_back(Detail::bare(column.name));
        });
        return names;
    }

    template <class Value>
    static void bindValue(Query& query, std::string_view name, const Value& value)
    {
        if constexpr (Detail::isPlain<Value>)
            query.bind(name, value);
        else if constexpr (Detail::isOptional<Value>)
            query.bind(name, JsonColumn::write(value));
        else
            query.bind(name, Json::encode(value));
    }

    std::tuple<Column<Access>...> m_columns;
};

/// Takes records out of the rows of a query, whose next columns are those of the list.
template <class Record, class List>
class RowReader {
public:
    RowReader(Query& query, const List& list) : m_list(list)
    {
        std::size_t at = 0;
        m_list.each([&](const auto& column) { take(query, std::invoke(column.access, m_record), m_texts[at++]); });
    }

    /// What the row says that the query stands on. It may be moved from.
    Record& record()
    {
        std::size_t at = 0;
        m_list.each([&](const auto& column) { decode(std::invoke(column.access, m_record), m_texts[at++]); });
        return m_record;
    }

    /// The row as it is stored, before `record` was asked for: two rows are equal when these are.
    [[nodiscard]] std::string stored() const
    {
        std::string text;
        std::size_t at = 0;
        m_list.each([&](const auto& column) { append(text, std::invoke(column.access, m_record), m_texts[at++]); });
        return text;
    }

private:
    using Text = std::optional<std::string>;

    template <class Value>
    static void append(std::string& stored, const Value& value, const Text& text)
    {
        if constexpr (!Detail::isPlain<Value>)
            Detail::appendOptional(stored, text);
        else if constexpr (std::is_same_v<Value, std::string>)
            Detail::appendStored(stored, value);
        else if constexpr (std::is_integral_v<Value>)
            Detail::appendStored(stored, std::to_string(value));
        else if constexpr (std::is_same_v<Value, std::optional<std::string>>)
            Detail::appendOptional(stored, value);
        else
            Detail::appendOptional(stored, value ? std::optional{std::to_string(*value)} : std::nullopt);
    }

    template <class Value>
    static void take(Query& query, Value& value, Text& text)
    {
        if constexpr (Detail::isPlain<Value>)
            query.into(value);
        else
            query.into(text);
    }

    template <class Value>
    static void decode(Value& value, const Text& text)
    {
        if constexpr (Detail::isPlain<Value>)
            return;
        else if constexpr (Detail::isOptional<Value>)
            value = JsonColumn::read<typename Value::value_type>(text);
        else
            value = JsonColumn::read<Value>(text.value_or(""));
    }

    Record m_record{};
    std::array<Text, List::count> m_texts; // of the JSON columns
    const List& m_list;
};

/// All records of a query whose columns are those of the list.
template <class Record, class List>
std::vector<Record> recordsOf(Query& query, const List& list)
{
    std::vector<Record> records;
    RowReader<Record, List> reader{query, list};
    while (query.next())
        records.push_back(std::move(reader.record()));
    return records;
}

/// The first record, or nothing when there is none.
template <class Record, class List>
std::optional<Record> recordOf(Query& query, const List& list)
{
    RowReader<Record, List> reader{query, list};
    return query.next() ? std::optional{std::move(reader.record())} : std::nullopt;
}

}
