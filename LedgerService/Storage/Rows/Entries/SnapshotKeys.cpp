#include "LedgerService/Storage/Rows/Entries/SnapshotKeys.h"

#include <cstddef>

#include "LedgerService/Random.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectKey = R"sql(
    SELECT snapshot_key FROM companies WHERE id = :company
)sql";

constexpr auto updateKey = R"sql(
    UPDATE companies SET snapshot_key = :key WHERE id = :company
)sql";

constexpr std::size_t keyBytes = 32;

}

std::string SnapshotKeys::find(Connection& connection, std::string_view companyID)
{
    std::string key;
    Query{connection, selectKey}.bind("company", companyID).into(key).next();
    return key;
}

void SnapshotKeys::draw(Connection& connection, std::string_view companyID)
{
    Query{connection, updateKey}.bind("company", companyID).bind("key", Random::text(keyBytes)).run();
}

}
