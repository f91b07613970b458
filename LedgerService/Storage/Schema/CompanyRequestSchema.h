#pragma once

#include <array>

namespace LedgerService {

/// Which company became of a person's request for another one: a request that is sent again makes none.
namespace CompanyRequestSchema {

inline constexpr std::array statements{
    R"sql(
    CREATE TABLE company_requests (
        user_id TEXT NOT NULL REFERENCES users (id),
        request_id TEXT NOT NULL,
        company_id TEXT NOT NULL REFERENCES companies (id),
        company_name TEXT NOT NULL,
        created_at TEXT NOT NULL,
        PRIMARY KEY (user_id, request_id)
    ) STRICT)sql",
    R"sql(
    CREATE INDEX company_requests_by_creation ON company_requests (user_id, created_at))sql",
};

}

}
