#include "LedgerService/Storage/Sql/ServedStatement.h"

#include <stdexcept>

namespace LedgerService {

ServedStatement::ServedStatement(soci::session& session, std::string_view sql) : m_statement(session)
{
    m_statement.alloc();
    m_statement.prepare(std::string{sql});
}

ServedStatement::Slot& ServedStatement::parameter(std::string_view name, ValueKind kind)
{
    auto& slot = m_parameters.emplace_back();
    if (kind == ValueKind::text)
        m_statement.exchange(soci::use(slot.text, slot.indicator, std::string{name}));
    else
        m_statement.exchange(soci::use(slot.number, slot.indicator, std::string{name}));
    return slot;
}

void ServedStatement::bindText(std::string_view name, std::string_view value)
{
    if (value.contains('\0'))
        throw std::invalid_argument("a text would be cut off at a zero byte");
    parameter(name, ValueKind::text).text = value;
}

void ServedStatement::bindNumber(std::string_view name, std::int64_t value)
{
    parameter(name, ValueKind::number).number = value;
}

void ServedStatement::bindNull(std::string_view name, ValueKind kind)
{
    parameter(name, kind).indicator = soci::i_null;
}

void ServedStatement::addColumn(ValueKind kind)
{
    auto& slot = m_columns.emplace_back();
    if (kind == ValueKind::text)
        m_statement.exchange(soci::into(slot.text, slot.indicator));
    else
        m_statement.exchange(soci::into(slot.number, slot.indicator));
}

bool ServedStatement::step()
{
    bool found = false;
    if (!m_started) {
        m_started = true;
        m_exhausted = true; // a run that fails leaves nothing to be taken
        m_statement.define_and_bind();
        found = m_statement.execute(true);
    } else {
        found = m_statement.fetch();
    }
    m_exhausted = !found;
    return found;
}

bool ServedStatement::isNull(std::size_t column)
{
    return m_columns[column].indicator == soci::i_null;
}

void ServedStatement::takeText(std::size_t column, std::string& target)
{
    target.swap(m_columns[column].text); // the next row's text finds room there
}

std::int64_t ServedStatement::number(std::size_t column)
{
    return m_columns[column].number;
}

std::int64_t ServedStatement::affectedRows()
{
    return m_statement.get_affected_rows();
}

bool ServedStatement::finish() noexcept
{
    try {
        if (m_started && !m_exhausted && !m_columns.empty())
            step();
        if (!m_exhausted && !m_columns.empty())
            return false;
        m_statement.bind_clean_up();
        m_parameters.clear();
        m_columns.clear();
        m_started = m_exhausted = false;
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}
