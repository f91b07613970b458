#pragma once

#include <array>

namespace LedgerService {

/// Receipts know the digest of their file, and files are found by it.
inline constexpr std::array receiptFileStep{
    R"sql(
    ALTER TABLE attachments ADD COLUMN content_digest TEXT)sql",
    R"sql(
    CREATE INDEX attachments_by_content ON attachments (content_digest) WHERE content_digest IS NOT NULL)sql",
};

}
