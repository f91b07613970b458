#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

/// A comma-separated document being written: every field quoted, records ended by CR LF, a byte-order mark in front.
/// A value that a spreadsheet would take for a formula gets an apostrophe in front.
class CsvDocument {
public:
    static constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

    /// Starts with the header record. `expectedBytes` is set aside at once.
    explicit CsvDocument(std::span<const std::string_view> header, std::size_t expectedBytes = 0);

    void field(std::string_view value);
    void number(std::int64_t value);
    void record(std::initializer_list<std::string_view> values);
    /// A field that `appendEscaped` wrote before.
    void escapedField(std::string_view escaped);
    void endRecord();

    [[nodiscard]] std::string take() { return std::move(m_text); }

    /// Appends `value` as a whole field, quotation marks included.
    static void appendEscaped(std::string& text, std::string_view value);

private:
    void separate();

    std::string m_text;
    bool m_atStart = true; // of a record
};

/// What stands in a field for a text that may not be set.
inline std::string_view orEmpty(const std::optional<std::string>& text)
{
    return text ? std::string_view{*text} : std::string_view{};
}
