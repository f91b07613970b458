#include "LedgerService/Storage/Rows/Entries/ReceiptSpace.h"

#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectUse = R"sql(
    SELECT receipt_bytes, CASE WHEN demo_locale IS NULL THEN 0 ELSE 1 END FROM companies WHERE id = :company
)sql";

constexpr auto selectAll = R"sql(
    SELECT CAST(COALESCE(SUM(receipt_bytes), 0) AS BIGINT) FROM companies
)sql";

constexpr auto selectFile = R"sql(
    SELECT 1 FROM attachments WHERE content_digest IS NOT NULL LIMIT 1
)sql";

constexpr auto addBytes = R"sql(
    UPDATE companies SET receipt_bytes = receipt_bytes + :bytes WHERE id = :company
)sql";

constexpr auto selectSum = R"sql(
    SELECT CAST(COALESCE(SUM(byte_count), 0) AS BIGINT) FROM attachments WHERE company_id = :company
)sql";

}

ReceiptSpace::Use ReceiptSpace::of(Connection& connection, std::string_view companyID)
{
    Use use;
    int demonstration = 0;
    Query{connection, selectUse}.bind("company", companyID).into(use.bytes).into(demonstration).next();
    use.demonstration = demonstration != 0;
    return use;
}

std::int64_t ReceiptSpace::ofAll(Connection& connection)
{
    std::int64_t bytes = 0;
    Query{connection, selectAll}.into(bytes).next();
    return bytes;
}

bool ReceiptSpace::isUsed(Connection& connection)
{
    int found = 0;
    return Query{connection, selectFile}.into(found).next();
}

void ReceiptSpace::add(Connection& connection, std::string_view companyID, std::int64_t bytes)
{
    Query{connection, addBytes}.bind("company", companyID).bind("bytes", bytes).run();
}

bool ReceiptSpace::isRight(Connection& connection, std::string_view companyID)
{
    std::int64_t sum = 0;
    Query{connection, selectSum}.bind("company", companyID).into(sum).next();
    return sum == of(connection, companyID).bytes;
}

}
