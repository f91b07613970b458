#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

class Connection;

/// A person's request for another company, and the company that became of it.
struct CompanyRequest {
    std::string userID;
    std::string requestID; // the person's own
    std::string companyID;
    std::string companyName; // as it was asked for
    std::string createdAt;
};

namespace CompanyRequestRepository {

std::optional<CompanyRequest> find(Connection& connection, std::string_view userID, std::string_view requestID);

/// How many the person has made since that stamp.
int countSince(Connection& connection, std::string_view userID, std::string_view since);

void insert(Connection& connection, const CompanyRequest& request);

}

}
