#pragma once

#include <array>

namespace LedgerService {

/// Invitations, of which one for each address of a company is open at a time. Codes stand as their hash.
namespace InvitationSchema {

inline constexpr std::array statements{
    R"sql(
    CREATE TABLE invitations (
        company_id TEXT NOT NULL REFERENCES companies (id),
        id TEXT NOT NULL,
        code_hash TEXT NOT NULL UNIQUE,
        invited_by TEXT NOT NULL,
        name TEXT NOT NULL,
        email TEXT NOT NULL,
        role TEXT NOT NULL,
        account_ids TEXT NOT NULL,
        permissions TEXT NOT NULL,
        account_grants TEXT NOT NULL,
        created_at TEXT NOT NULL,
        expires_at TEXT NOT NULL,
        accepted_at TEXT,
        revoked_at TEXT,
        PRIMARY KEY (company_id, id),
        FOREIGN KEY (company_id, invited_by) REFERENCES members (company_id, id)
    ) STRICT)sql",
    R"sql(
    CREATE INDEX invitations_by_creation ON invitations (company_id, created_at))sql",
    R"sql(
    CREATE UNIQUE INDEX open_invitations ON invitations (company_id, email)
        WHERE accepted_at IS NULL AND revoked_at IS NULL)sql",
};

}

}
