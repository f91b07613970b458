#include "LedgerService/Storage/Sql/DatabaseFailure.h"

#include <string_view>

#include <soci/sqlite3/soci-sqlite3.h>

namespace LedgerService {

namespace {

/// Without the library's function in front: "sqlite3_statement_backend::prepare: file is not a database".
std::string_view withoutOrigin(std::string_view message)
{
    constexpr std::string_view separator = ": ";
    const auto end = message.find(separator);
    const bool named = message.substr(0, end).find("::") != std::string_view::npos;
    return named && end != std::string_view::npos ? message.substr(end + separator.size()) : message;
}

}

std::string DatabaseFailure::words(const std::exception& failure)
{
    const auto* ofDatabase = dynamic_cast<const soci::soci_error*>(&failure);
    return ofDatabase ? std::string{withoutOrigin(ofDatabase->get_error_message())} : failure.what();
}

bool DatabaseFailure::isBusy(const std::exception& failure)
{
    constexpr int resultMask = 0xFF; // of an extended result
    const auto* ofFile = dynamic_cast<const soci::sqlite3_soci_error*>(&failure);
    if (ofFile)
        return (ofFile->result() & resultMask) == SQLITE_BUSY;
    return dynamic_cast<const DatabaseBusy*>(&failure) != nullptr;
}

}
