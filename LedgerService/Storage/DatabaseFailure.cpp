#include "LedgerService/Storage/DatabaseFailure.h"

#include <soci/error.h>

std::string DatabaseFailure::words(const std::exception& failure)
{
    const auto* ofDatabase = dynamic_cast<const soci::soci_error*>(&failure);
    return ofDatabase ? ofDatabase->get_error_message() : failure.what();
}
