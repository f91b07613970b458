#include "LedgerService/Storage/Rows/AttachmentRepository.h"

#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectAttachment = R"sql(
    SELECT id, transaction_id, name, mime, byte_count, created_at
    FROM attachments WHERE company_id = :company AND id = :attachment
)sql";

constexpr auto selectAttachments = R"sql(
    SELECT id, transaction_id, name, mime, byte_count, created_at, member_id
    FROM attachments WHERE company_id = :company ORDER BY transaction_id, position
)sql";

constexpr auto insertAttachment = R"sql(
    INSERT INTO attachments (company_id, id, member_id, transaction_id, position, name, mime, byte_count, created_at)
    VALUES (:company, :id, :member, :entry, 0, :name, :mime, :bytes, :created)
)sql";

constexpr auto linkAttachment = R"sql(
    UPDATE attachments
    SET transaction_id = :entry,
        position = (SELECT COUNT(*) FROM attachments WHERE company_id = :company AND transaction_id = :entry)
    WHERE company_id = :company AND id = :attachment AND transaction_id IS NULL
)sql";

void takeColumns(Query& query, Attachment& attachment)
{
    query.into(attachment.id).into(attachment.transactionID).into(attachment.name).into(attachment.mime);
    query.into(attachment.byteCount).into(attachment.createdAt);
}

}

std::optional<Attachment> AttachmentRepository::find(Connection& connection, std::string_view companyID,
                                                     std::string_view attachmentID)
{
    Attachment attachment;
    Query query{connection, selectAttachment};
    query.bind("company", companyID).bind("attachment", attachmentID);
    takeColumns(query, attachment);
    return query.next() ? std::optional{attachment} : std::nullopt;
}

std::vector<StoredAttachment> AttachmentRepository::all(Connection& connection, std::string_view companyID)
{
    std::vector<StoredAttachment> attachments;
    StoredAttachment each;
    Query query{connection, selectAttachments};
    query.bind("company", companyID);
    takeColumns(query, each.attachment);
    query.into(each.memberID);
    while (query.next())
        attachments.push_back(each);
    return attachments;
}

void AttachmentRepository::insert(Connection& connection, std::string_view companyID, const StoredAttachment& stored)
{
    Query{connection, insertAttachment}
        .bind("company", companyID)
        .bind("id", stored.attachment.id)
        .bind("member", stored.memberID)
        .bind("entry", stored.attachment.transactionID)
        .bind("name", stored.attachment.name)
        .bind("mime", stored.attachment.mime)
        .bind("bytes", stored.attachment.byteCount)
        .bind("created", stored.attachment.createdAt)
        .run();
}

void AttachmentRepository::link(Connection& connection, std::string_view companyID, std::string_view entryID,
                                const std::vector<std::string>& attachmentIDs)
{
    for (const auto& id : attachmentIDs)
        Query{connection, linkAttachment}
            .bind("company", companyID)
            .bind("entry", entryID)
            .bind("attachment", id)
            .run();
}

}
