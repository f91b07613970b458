#include "LedgerCore/Domain/Csv/CsvReader.h"

#include "LedgerCore/Domain/Csv/CsvDocument.h"

namespace {

bool endsField(char each)
{
    return each == ',' || each == '\r' || each == '\n';
}

}

CsvReader::CsvReader(std::string_view text) : m_rest(text)
{
    while (m_rest.starts_with(CsvDocument::byteOrderMark))
        m_rest.remove_prefix(CsvDocument::byteOrderMark.size());
    const auto last = m_rest.find_last_not_of("\r\n");
    m_rest = m_rest.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

CsvReader::Outcome CsvReader::next()
{
    m_fields.clear();
    m_halved.clear();
    if (m_rest.empty())
        return Outcome::end;
    do {
        if (!readField()) {
            m_rest = {};
            return Outcome::fault;
        }
    } while (!endsRecord());
    return Outcome::record;
}

bool CsvReader::readField()
{
    if (m_rest.starts_with('"'))
        return readQuotedField();
    std::size_t end = 0;
    while (end < m_rest.size() && !endsField(m_rest[end])) {
        if (m_rest[end] == '"')
            return false;
        ++end;
    }
    m_fields.push_back(m_rest.substr(0, end));
    m_rest.remove_prefix(end);
    return true;
}

bool CsvReader::readQuotedField()
{
    m_rest.remove_prefix(1);
    auto end = m_rest.find('"');
    if (end == std::string_view::npos)
        return false;
    if (!m_rest.substr(end + 1).starts_with('"')) {
        m_fields.push_back(m_rest.substr(0, end));
    } else {
        auto& field = m_halved.emplace_back();
        while (m_rest.substr(end + 1).starts_with('"')) {
            field += m_rest.substr(0, end + 1);
            m_rest.remove_prefix(end + 2);
            end = m_rest.find('"');
            if (end == std::string_view::npos)
                return false;
        }
        field += m_rest.substr(0, end);
        m_fields.push_back(field);
    }
    m_rest.remove_prefix(end + 1);
    return m_rest.empty() || endsField(m_rest.front());
}

/// Passes over what follows a field: true behind a record's last one.
bool CsvReader::endsRecord()
{
    if (m_rest.starts_with(',')) {
        m_rest.remove_prefix(1);
        return false;
    }
    m_rest.remove_prefix(m_rest.starts_with("\r\n") ? 2 : m_rest.empty() ? 0 : 1);
    return true;
}
