#include "LedgerService/Storage/Schema/CompanyKeyStep.h"

#include <cstddef>
#include <string>
#include <vector>

#include "LedgerService/Random.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

// As the service draws them of this step on; a later step draws in its own way.
void CompanyKeyStep::drawKeys(Connection& connection)
{
    constexpr std::size_t keyBytes = 32;
    std::vector<std::string> companyIDs;
    std::string each;
    {
        Query query{connection, "SELECT id FROM companies"};
        query.into(each);
        while (query.next())
            companyIDs.push_back(each);
    }
    for (const auto& companyID : companyIDs)
        Query{connection, "UPDATE companies SET snapshot_key = :key WHERE id = :company"}
            .bind("key", Random::text(keyBytes))
            .bind("company", companyID)
            .run();
}

}
