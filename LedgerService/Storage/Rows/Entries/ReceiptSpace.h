#pragma once

#include <cstdint>
#include <string_view>

namespace LedgerService {

class Connection;

/// How many bytes the receipts of a company have together: counted as they come and go, for it is asked with each one.
namespace ReceiptSpace {

struct Use {
    std::int64_t bytes = 0;
    bool demonstration = false; // of the company
};

Use of(Connection& connection, std::string_view companyID);

/// Bytes of the receipts of all companies.
std::int64_t ofAll(Connection& connection);

/// Whether any receipt of any company has a file. Those of sample books have none.
bool isUsed(Connection& connection);

/// Counts bytes that come, or with less than zero, that go.
void add(Connection& connection, std::string_view companyID, std::int64_t bytes);

/// Whether what was counted is what the receipts have.
bool isRight(Connection& connection, std::string_view companyID);

}

}
