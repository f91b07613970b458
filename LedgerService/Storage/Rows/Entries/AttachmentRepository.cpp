#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"

#include <algorithm>
#include <tuple>

#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Entries/ReceiptSpace.h"
#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

/// A receipt's row as a member's view sorts it.
struct AttachmentRow {
    StoredAttachment stored;
    int position = 0; // on its entry
};

constexpr Columns columns{
    column("id", [](auto& row) -> auto& { return row.stored.attachment.id; }),
    column("transaction_id", [](auto& row) -> auto& { return row.stored.attachment.transactionID; }),
    column("name", [](auto& row) -> auto& { return row.stored.attachment.name; }),
    column("mime", [](auto& row) -> auto& { return row.stored.attachment.mime; }),
    column("byte_count", [](auto& row) -> auto& { return row.stored.attachment.byteCount; }),
    column("created_at", [](auto& row) -> auto& { return row.stored.attachment.createdAt; }),
    column("member_id", [](auto& row) -> auto& { return row.stored.memberID; }),
    column("uploaded_change", [](auto& row) -> auto& { return row.stored.uploadedChange; }),
    column("linked_change", [](auto& row) -> auto& { return row.stored.linkedChange; }),
    column("account_set", [](auto& row) -> auto& { return row.stored.accountSet; }),
    column("position", &AttachmentRow::position),
    column("content_digest", [](auto& row) -> auto& { return row.stored.contentDigest; }),
};

const auto selectAttachment = columns.select("FROM attachments WHERE company_id = :company AND id = :attachment");
const auto selectAttachments =
    columns.select("FROM attachments WHERE company_id = :company ORDER BY transaction_id, position");
const auto selectUploaded = columns.select("FROM attachments WHERE company_id = :company AND member_id = :member AND "
                                           "uploaded_change > :after AND uploaded_change <= :last");
const auto selectLinked = columns.select("FROM attachments WHERE company_id = :company AND linked_change > 0 AND "
                                         "linked_change > :after AND linked_change <= :last");
const auto insertAttachment = columns.insert("attachments", {{"company_id", ":company"}});

/// So many rows at a time that writers hardly notice.
constexpr auto selectOutdatedLoose = R"sql(
    SELECT company_id, id, byte_count, COALESCE(content_digest, '') FROM attachments
    WHERE linked_change = 0 AND created_at < :before LIMIT 200
)sql";

constexpr auto deleteLoose = R"sql(
    DELETE FROM attachments WHERE company_id = :company AND id = :attachment AND linked_change = 0
)sql";

constexpr auto selectNamed = R"sql(
    SELECT 1 FROM attachments WHERE content_digest = :digest LIMIT 1
)sql";

constexpr auto countLoose = R"sql(
    SELECT COUNT(*) FROM attachments WHERE company_id = :company AND member_id = :member AND linked_change = 0
)sql";

constexpr auto linkAttachment = R"sql(
    UPDATE attachments
    SET transaction_id = :entry, linked_change = :change, account_set = :set,
        position = (SELECT COUNT(*) FROM attachments WHERE company_id = :company AND transaction_id = :entry)
    WHERE company_id = :company AND id = :attachment AND transaction_id IS NULL
)sql";

std::vector<AttachmentRow> uploadedIn(Connection& connection, const AttachmentView& view)
{
    Query query{connection, selectUploaded};
    query.bind("company", view.companyID).bind("member", view.memberID);
    query.bind("after", view.after).bind("last", view.last);
    return recordsOf<AttachmentRow>(query, columns);
}

std::vector<AttachmentRow> allLinkedIn(Connection& connection, const AttachmentView& view)
{
    Query query{connection, selectLinked};
    query.bind("company", view.companyID).bind("after", view.after).bind("last", view.last);
    return recordsOf<AttachmentRow>(query, columns);
}

/// Those of the rows that the member sees, in the order in which the member got to see them.
std::vector<Attachment> visible(std::vector<AttachmentRow> rows, const AttachmentView& view)
{
    const auto key = [&](const AttachmentRow& row) {
        const bool own = row.stored.memberID == view.memberID;
        return std::tuple{own ? row.stored.uploadedChange : row.stored.linkedChange, row.position,
                          std::string_view{row.stored.attachment.id}};
    };
    std::ranges::sort(rows, {}, key);
    std::vector<Attachment> attachments;
    for (auto& row : rows) {
        const bool loose = row.stored.linkedChange == 0 || row.stored.linkedChange > view.asOf;
        if (loose)
            row.stored.attachment.transactionID.reset();
        if (loose || view.seesEntriesOn(row.stored.accountSet))
            attachments.push_back(std::move(row.stored.attachment));
    }
    return attachments;
}

}

std::optional<StoredAttachment> AttachmentRepository::find(Connection& connection, std::string_view companyID,
                                                           std::string_view attachmentID)
{
    Query query{connection, selectAttachment};
    query.bind("company", companyID).bind("attachment", attachmentID);
    auto row = recordOf<AttachmentRow>(query, columns);
    return row ? std::optional{std::move(row->stored)} : std::nullopt;
}

std::vector<StoredAttachment> AttachmentRepository::all(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectAttachments};
    query.bind("company", companyID);
    std::vector<StoredAttachment> attachments;
    for (auto& row : recordsOf<AttachmentRow>(query, columns))
        attachments.push_back(std::move(row.stored));
    return attachments;
}

std::vector<Attachment> AttachmentRepository::seenIn(Connection& connection, const AttachmentView& view)
{
    auto rows = allLinkedIn(connection, view);
    std::erase_if(rows, [&](const AttachmentRow& row) { return row.stored.memberID == view.memberID; });
    std::ranges::move(uploadedIn(connection, view), std::back_inserter(rows));
    return visible(std::move(rows), view);
}

std::vector<Attachment> AttachmentRepository::linkedIn(Connection& connection, const AttachmentView& view)
{
    auto rows = allLinkedIn(connection, view);
    std::erase_if(rows, [&](const AttachmentRow& row) {
        return row.stored.memberID != view.memberID || row.stored.uploadedChange > view.after;
    });
    return visible(std::move(rows), view);
}

std::int64_t AttachmentRepository::looseCount(Connection& connection, std::string_view companyID,
                                              std::string_view memberID)
{
    std::int64_t count = 0;
    Query query{connection, countLoose};
    query.bind("company", companyID).bind("member", memberID).into(count).next();
    return count;
}

void AttachmentRepository::insert(Connection& connection, std::string_view companyID, const Attachment& attachment,
                                  std::string_view memberID, std::optional<std::string> contentDigest)
{
    AttachmentRow row;
    row.stored.contentDigest = std::move(contentDigest);
    row.stored.attachment = attachment;
    row.stored.attachment.transactionID.reset();
    row.stored.memberID = memberID;
    row.stored.uploadedChange = CompanyHistory::advance(connection, companyID).lastChange;
    Query query{connection, insertAttachment};
    columns.bind(query.bind("company", companyID), row);
    query.run();
    ReceiptSpace::add(connection, companyID, attachment.byteCount);
}

std::vector<std::string> AttachmentRepository::removeLoose(Connection& connection, std::string_view before)
{
    struct Loose {
        std::string companyID;
        std::string id;
        std::int64_t bytes = 0;
        std::string digest;
    };
    std::vector<Loose> outdated;
    {
        Loose each;
        Query query{connection, selectOutdatedLoose};
        query.bind("before", before).into(each.companyID).into(each.id).into(each.bytes).into(each.digest);
        while (query.next())
            outdated.push_back(each);
    }
    std::vector<std::string> digests;
    for (const auto& each : outdated) {
        Query{connection, deleteLoose}.bind("company", each.companyID).bind("attachment", each.id).run();
        ReceiptSpace::add(connection, each.companyID, -each.bytes);
        CompanyHistory::advance(connection, each.companyID);
        digests.push_back(each.digest);
    }
    return digests;
}

bool AttachmentRepository::isNamed(Connection& connection, std::string_view contentDigest)
{
    int one = 0;
    return Query{connection, selectNamed}.bind("digest", contentDigest).into(one).next();
}

void AttachmentRepository::link(Connection& connection, std::string_view companyID, std::string_view entryID,
                                int accountSet, std::int64_t change, const std::vector<std::string>& attachmentIDs)
{
    for (const auto& id : attachmentIDs)
        Query{connection, linkAttachment}
            .bind("company", companyID)
            .bind("entry", entryID)
            .bind("change", change)
            .bind("set", accountSet)
            .bind("attachment", id)
            .run();
}

}
