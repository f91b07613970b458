#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

/// Gives each row of an import file an identifier made of the company and the row's cells alone, so that a second run
/// of the file sends the same identifiers. Rows that read the same are told apart by counting them.
class ImportRowIdentity {
public:
    /// There may be any number of rows; for as many as expected there is room from the start.
    ImportRowIdentity(std::string_view companyID, std::size_t rowsExpected);
    ~ImportRowIdentity();

    /// The identifier of the next row, as a UUID text.
    std::string next(std::span<const std::string_view> cells);

    /// Whether the text has the form of such an identifier; the keys that people's own entries get have another.
    static bool isIdentifier(std::string_view text);

private:
    struct State;
    std::unique_ptr<State> m_state;
};
