#pragma once

#include <array>

namespace LedgerService {

class Connection;

/// Each company has a secret that the tags of its snapshots are made with, and knows how many bytes its receipts have.
/// What an entry said before it was renewed is found by the entry.
namespace CompanyKeyStep {

inline constexpr std::array statements{
    R"sql(
    ALTER TABLE companies ADD COLUMN snapshot_key TEXT NOT NULL DEFAULT '')sql",
    R"sql(
    ALTER TABLE companies ADD COLUMN receipt_bytes INTEGER NOT NULL DEFAULT 0)sql",
    R"sql(
    UPDATE companies SET receipt_bytes =
        (SELECT COALESCE(SUM(byte_count), 0) FROM attachments WHERE company_id = companies.id))sql",
    R"sql(
    CREATE INDEX renewals_by_entry ON entry_renewals (company_id, sequence, change))sql",
};

/// Draws the secret of every company that there is.
void drawKeys(Connection& connection);

}

}
