#include "LedgerService/Storage/Sql/DatabaseFailure.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <fmt/core.h>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/sqlite3/soci-sqlite3.h>

namespace LedgerService {

namespace {

/// States of PostgreSQL by their code.
constexpr auto conflicts = std::to_array<std::string_view>({"40001", "40P01"});
constexpr int resultMask = 0xFF; // of an extended result of SQLite
constexpr std::string_view diskFull = "53100";
constexpr std::string_view lockNotAvailable = "55P03";
/// Told by a server that ends, is still starting, takes no more connections or has become a standby.
constexpr auto absences = std::to_array<std::string_view>({"57P01", "57P02", "57P03", "53300", "25006", "     "});
constexpr std::string_view connectionClass = "08";
constexpr std::string_view valueClass = "22"; // their words repeat the value

/// Without the library's function in front: "sqlite3_statement_backend::prepare: file is not a database".
std::string_view withoutOrigin(std::string_view message)
{
    constexpr std::string_view separator = ": ";
    const auto end = message.find(separator);
    const bool named = message.substr(0, end).find("::") != std::string_view::npos;
    return named && end != std::string_view::npos ? message.substr(end + separator.size()) : message;
}

/// What PostgreSQL calls the failure; empty for failures that are none of it.
std::string stateOf(const std::exception& failure)
{
    const auto* ofServer = dynamic_cast<const soci::postgresql_soci_error*>(&failure);
    return ofServer ? ofServer->sqlstate() : std::string{};
}

}

std::string DatabaseFailure::words(const std::exception& failure)
{
    const auto state = stateOf(failure);
    if (state.starts_with(valueClass))
        return fmt::format("a value is none of its column's type ({})", state);
    const auto* ofDatabase = dynamic_cast<const soci::soci_error*>(&failure);
    if (!ofDatabase)
        return failure.what();
    std::string text{withoutOrigin(ofDatabase->get_error_message())};
    while (text.ends_with('\n'))
        text.pop_back();
    std::ranges::replace_if(text, [](char each) { return each == '\n' || each == '\t'; }, ' '); // one line of the log
    return text;
}

bool DatabaseFailure::isBusy(const std::exception& failure)
{
    const auto* ofFile = dynamic_cast<const soci::sqlite3_soci_error*>(&failure);
    if (ofFile)
        return (ofFile->result() & resultMask) == SQLITE_BUSY;
    return dynamic_cast<const DatabaseBusy*>(&failure) != nullptr || stateOf(failure) == lockNotAvailable ||
           isConflict(failure);
}

bool DatabaseFailure::isFull(const std::exception& failure)
{
    const auto* ofFile = dynamic_cast<const soci::sqlite3_soci_error*>(&failure);
    return ofFile ? (ofFile->result() & resultMask) == SQLITE_FULL : stateOf(failure) == diskFull;
}

bool DatabaseFailure::isOutOfReach(const std::exception& failure)
{
    const auto state = stateOf(failure);
    return dynamic_cast<const DatabaseUnreachable*>(&failure) != nullptr || state.starts_with(connectionClass) ||
           std::ranges::find(absences, state) != absences.end();
}

bool DatabaseFailure::isConflict(const std::exception& failure)
{
    return std::ranges::find(conflicts, stateOf(failure)) != conflicts.end();
}

}
