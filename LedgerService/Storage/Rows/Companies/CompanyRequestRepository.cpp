#include "LedgerService/Storage/Rows/Companies/CompanyRequestRepository.h"

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr Columns columns{column("user_id", &CompanyRequest::userID), column("request_id", &CompanyRequest::requestID),
                          column("company_id", &CompanyRequest::companyID),
                          column("company_name", &CompanyRequest::companyName),
                          column("created_at", &CompanyRequest::createdAt)};

const auto selectRequest = columns.select("FROM company_requests WHERE user_id = :user AND request_id = :request");
const auto insertRequest = columns.insert("company_requests", {});

constexpr auto countRecent = R"sql(
    SELECT COUNT(*) FROM company_requests WHERE user_id = :user AND created_at > :since
)sql";

}

std::optional<CompanyRequest> CompanyRequestRepository::find(Connection& connection, std::string_view userID,
                                                             std::string_view requestID)
{
    Query query{connection, selectRequest};
    query.bind("user", userID).bind("request", requestID);
    return recordOf<CompanyRequest>(query, columns);
}

int CompanyRequestRepository::countSince(Connection& connection, std::string_view userID, std::string_view since)
{
    int count = 0;
    Query query{connection, countRecent};
    query.bind("user", userID).bind("since", since).into(count).next();
    return count;
}

void CompanyRequestRepository::insert(Connection& connection, const CompanyRequest& request)
{
    Query query{connection, insertRequest};
    columns.bind(query, request);
    query.run();
}

}
