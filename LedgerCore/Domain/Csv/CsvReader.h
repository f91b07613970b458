#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// Reads comma-separated text record by record without copying it: the fields of a record are views of the text, or of
/// the reader itself where doubled quotation marks were halved, and hold until the next record is read.
/// Strict: a quotation mark stands only around a whole field or doubled inside one. A line feed, a carriage return or
/// the pair of them ends a record. Byte-order marks in front of the text are passed over, and so are empty lines at
/// its end.
class CsvReader {
public:
    enum class Outcome { record, end, fault };

    explicit CsvReader(std::string_view text);

    /// Reads the next record. After `end` or `fault` there is nothing more to read.
    Outcome next();

    [[nodiscard]] const std::vector<std::string_view>& fields() const { return m_fields; }

private:
    bool readField();
    bool readQuotedField();
    bool endsRecord();

    std::string_view m_rest;
    std::vector<std::string_view> m_fields;
    std::deque<std::string> m_halved; // keeps its strings in place while it grows
};
