#pragma once

#include <array>

namespace LedgerService {

/// Entries that members have begun and not recorded, each the member's own.
namespace DraftSchema {

inline constexpr std::array statements{
    R"sql(
    CREATE TABLE entry_drafts (
        company_id TEXT NOT NULL REFERENCES companies (id),
        member_id TEXT NOT NULL,
        idempotency_key TEXT NOT NULL,
        entry TEXT NOT NULL,
        locale TEXT NOT NULL,
        sent TEXT,
        writer TEXT NOT NULL,
        changed_at TEXT NOT NULL,
        PRIMARY KEY (company_id, member_id, idempotency_key),
        FOREIGN KEY (company_id, member_id) REFERENCES members (company_id, id)
    ) STRICT)sql",
};

}

}
