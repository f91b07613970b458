#include "LedgerService/Storage/Sql/Query.h"

#include <deque>
#include <stdexcept>
#include <type_traits>
#include <variant>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Sql/ConnectionState.h"

namespace LedgerService {

namespace {

/// A parameter or a column: the library reads and writes it in place, so its address stays.
struct Slot {
    std::string text;
    long long number = 0;
    soci::indicator indicator = soci::i_ok;
};

using Target = std::variant<std::string*, std::optional<std::string>*, std::optional<int>*, std::optional<bool>*,
                            std::int64_t*, int*, bool*>;

struct Column {
    Target target;
    Slot slot;
};

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
Type valueOf(Slot& slot)
{
    if constexpr (isText<Type>)
        return std::move(slot.text);
    else if constexpr (std::is_same_v<Type, bool>)
        return slot.number != 0;
    else
        return static_cast<Type>(slot.number);
}

void deliver(Column& column)
{
    const bool null = column.slot.indicator == soci::i_null;
    std::visit(
        [&](auto* target) {
            using Type = std::remove_pointer_t<decltype(target)>;
            if (null)
                *target = Type{};
            else if constexpr (std::is_same_v<Type, std::string>)
                target->swap(column.slot.text); // the next row's text finds room there
            else
                *target = valueOf<typename Plain<Type>::type>(column.slot);
        },
        column.target);
}

bool takesText(const Target& target)
{
    return std::visit([](auto* each) { return isText<std::remove_pointer_t<decltype(each)>>; }, target);
}

}

struct Query::Parts {
    Connection::State& connection;
    PreparedStatement& prepared;
    std::deque<Slot> parameters;
    std::deque<Column> columns;
    bool started = false;
    bool exhausted = false;

    Slot& parameter(std::string_view name, bool text);
    void column(Target target);
    bool step();
};

Slot& Query::Parts::parameter(std::string_view name, bool text)
{
    auto& slot = parameters.emplace_back();
    if (text)
        prepared.statement.exchange(soci::use(slot.text, slot.indicator, std::string{name}));
    else
        prepared.statement.exchange(soci::use(slot.number, slot.indicator, std::string{name}));
    return slot;
}

void Query::Parts::column(Target target)
{
    auto& added = columns.emplace_back(target, Slot{});
    if (takesText(target))
        prepared.statement.exchange(soci::into(added.slot.text, added.slot.indicator));
    else
        prepared.statement.exchange(soci::into(added.slot.number, added.slot.indicator));
}

bool Query::Parts::step()
{
    bool found = false;
    if (!started) {
        started = true;
        prepared.statement.define_and_bind();
        exhausted = connection.postgresql.has_value(); // a run that fails there leaves nothing to be taken
        found = prepared.statement.execute(true);
        if (connection.postgresql && !prepared.onlyReads)
            connection.rowsChanged += prepared.statement.get_affected_rows();
    } else {
        found = prepared.statement.fetch();
    }
    exhausted = !found;
    return found;
}

Query::Query(Connection& connection, std::string_view sql)
    : m_parts(new Parts{connection.state(), connection.state().prepared(sql), {}, {}})
{
}

// A statement left in the middle of its rows would keep its view of the database open, and every later transaction
// of the connection with it.
Query::~Query()
{
    try {
        if (m_parts->started && !m_parts->exhausted && !m_parts->columns.empty())
            m_parts->step();
        if (m_parts->exhausted || m_parts->columns.empty()) {
            m_parts->prepared.statement.bind_clean_up();
            m_parts->prepared.inUse = false;
            return;
        }
    } catch (const std::exception&) {
        m_parts->exhausted = false;
    }
    const auto key = m_parts->prepared.key;
    m_parts->connection.statements.erase(key);
}

Query& Query::bind(std::string_view name, std::string_view value)
{
    if (m_parts->connection.postgresql && value.contains('\0'))
        throw std::invalid_argument("a text would be cut off at a zero byte");
    m_parts->parameter(name, true).text = value;
    return *this;
}

Query& Query::bind(std::string_view name, const std::optional<std::string>& value)
{
    if (value)
        return bind(name, std::string_view{*value});
    m_parts->parameter(name, true).indicator = soci::i_null;
    return *this;
}

Query& Query::bind(std::string_view name, const std::optional<int>& value)
{
    auto& slot = m_parts->parameter(name, false);
    slot.number = value.value_or(0);
    slot.indicator = value ? soci::i_ok : soci::i_null;
    return *this;
}

Query& Query::bind(std::string_view name, std::int64_t value)
{
    m_parts->parameter(name, false).number = value;
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
    for (auto& column : m_parts->columns)
        deliver(column);
    return true;
}

std::int64_t Query::run()
{
    require(m_parts->columns.empty() && !m_parts->started, "a statement that changes rows runs once");
    m_parts->step();
    return m_parts->prepared.statement.get_affected_rows();
}

}
