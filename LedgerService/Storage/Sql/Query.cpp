#include "LedgerService/Storage/Sql/Query.h"

#include <type_traits>
#include <variant>
#include <vector>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Sql/ConnectionState.h"

namespace LedgerService {

namespace {

using Target = std::variant<std::string*, std::optional<std::string>*, std::optional<int>*, std::optional<bool>*,
                            std::int64_t*, int*, bool*>;

template <class Type>
struct Plain {
    using type = Type;
};
template <class Type>
struct Plain<std::optional<Type>> {
    using type = Type;
};

template <class Type>
constexpr bool isText = std::is_same_v<typename Plain<Type>::type, std::string>;

template <class Type>
Type numberIn(PreparedStatement& row, std::size_t column)
{
    if constexpr (std::is_same_v<Type, bool>)
        return row.number(column) != 0;
    else
        return static_cast<Type>(row.number(column));
}

template <class Type>
void deliver(PreparedStatement& row, std::size_t column, Type& target)
{
    using Value = typename Plain<Type>::type;
    if (row.isNull(column))
        target = Type{};
    else if constexpr (std::is_same_v<Type, std::string>)
        row.takeText(column, target);
    else if constexpr (isText<Type>)
        row.takeText(column, target ? *target : target.emplace());
    else
        target = numberIn<Value>(row, column);
}

ValueKind kindOf(const Target& target)
{
    const bool text = std::visit([](auto* each) { return isText<std::remove_pointer_t<decltype(each)>>; }, target);
    return text ? ValueKind::text : ValueKind::number;
}

}

struct Query::Parts {
    Connection::State& connection;
    PreparedStatement& prepared;
    std::vector<Target> columns = {};
    bool started = false;
    bool exhausted = false;

    void column(Target target);
    bool step();
};

void Query::Parts::column(Target target)
{
    columns.push_back(target);
    prepared.addColumn(kindOf(target));
}

bool Query::Parts::step()
{
    const bool found = prepared.step();
    if (!started && connection.postgresql && !prepared.onlyReads)
        connection.rowsChanged += prepared.affectedRows();
    started = true;
    exhausted = !found;
    return found;
}

Query::Query(Connection& connection, std::string_view sql)
    : m_parts(new Parts{connection.state(), connection.state().prepared(sql)})
{
}

Query::~Query()
{
    m_parts->connection.giveBack(m_parts->prepared);
}

Query& Query::bind(std::string_view name, std::string_view value)
{
    m_parts->prepared.bindText(name, value);
    return *this;
}

Query& Query::bind(std::string_view name, const std::optional<std::string>& value)
{
    if (value)
        return bind(name, std::string_view{*value});
    m_parts->prepared.bindNull(name, ValueKind::text);
    return *this;
}

Query& Query::bind(std::string_view name, const std::optional<int>& value)
{
    if (value)
        return bind(name, std::int64_t{*value});
    m_parts->prepared.bindNull(name, ValueKind::number);
    return *this;
}

Query& Query::bind(std::string_view name, std::int64_t value)
{
    m_parts->prepared.bindNumber(name, value);
    return *this;
}

Query& Query::into(std::string& target)
{
    m_parts->column(&target);
    return *this;
}

Query& Query::into(std::optional<std::string>& target)
{
    m_parts->column(&target);
    return *this;
}

Query& Query::into(std::optional<int>& target)
{
    m_parts->column(&target);
    return *this;
}

Query& Query::into(std::optional<bool>& target)
{
    m_parts->column(&target);
    return *this;
}

Query& Query::into(std::int64_t& target)
{
    m_parts->column(&target);
    return *this;
}

Query& Query::into(int& target)
{
    m_parts->column(&target);
    return *this;
}

Query& Query::into(bool& target)
{
    m_parts->column(&target);
    return *this;
}

bool Query::next()
{
    require(!m_parts->columns.empty(), "rows are taken into named targets");
    if (m_parts->exhausted || !m_parts->step())
        return false;
    for (std::size_t at = 0; at < m_parts->columns.size(); ++at)
        std::visit([&](auto* target) { deliver(m_parts->prepared, at, *target); }, m_parts->columns[at]);
    return true;
}

std::int64_t Query::run()
{
    require(m_parts->columns.empty() && !m_parts->started, "a statement that changes rows runs once");
    m_parts->step();
    return m_parts->prepared.affectedRows();
}

}
