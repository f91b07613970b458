#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"

namespace LedgerService {

class Connection;

/// Names one state of what one member sees of a company. Two equal tags stand for equal snapshots. Only the service
/// reads them: how many changes there were, hidden ones among them, is nobody's to know.
class SnapshotTag {
public:
    /// The tag of this state for the reader.
    static SnapshotTag current(Connection& connection, std::string_view companyID, const Member& reader,
                               const CompanyState& state);

    /// The tag with this text, if it is one that the reader got with the rights of today for a state of these books
    /// from which they have only gone on since.
    static std::optional<SnapshotTag> earlier(Connection& connection, std::string_view companyID, const Member& reader,
                                              const CompanyState& state, std::string_view text);

    /// The last change of the state.
    [[nodiscard]] std::int64_t change() const { return m_change; }

    /// As an entity tag of HTTP, with its quotation marks.
    [[nodiscard]] const std::string& text() const { return m_text; }

private:
    SnapshotTag(std::int64_t change, std::string text) : m_change(change), m_text(std::move(text)) {}

    std::int64_t m_change;
    std::string m_text;
};

}
