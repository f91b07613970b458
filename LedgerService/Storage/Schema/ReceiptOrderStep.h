#pragma once

#include <array>

namespace LedgerService {

/// A snapshot tells of all receipts that its reader sees, in the order in which they came into sight. The indexes hold
/// whatever it tells, so that no row is looked up for it.
inline constexpr std::array receiptOrderStep{
    R"sql(
    DROP INDEX attachments_by_link)sql",
    R"sql(
    CREATE INDEX attachments_by_link ON attachments
        (company_id, linked_change, position, id, member_id, account_set, transaction_id, name, mime, byte_count,
         created_at, uploaded_change))sql",
    R"sql(
    DROP INDEX attachments_by_upload)sql",
    R"sql(
    CREATE INDEX attachments_by_upload ON attachments
        (company_id, member_id, uploaded_change, position, id, account_set, transaction_id, name, mime, byte_count,
         created_at, linked_change))sql",
};

}
