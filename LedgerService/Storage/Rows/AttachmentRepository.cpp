#include "LedgerService/Storage/Rows/AttachmentRepository.h"

#include <algorithm>
#include <tuple>

#include <fmt/core.h>

#include "LedgerService/Storage/Rows/CompanyHistory.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr std::string_view selectColumns = R"sql(
    SELECT id, transaction_id, name, mime, byte_count, created_at, member_id, uploaded_change, linked_change,
           account_set, position
    FROM attachments WHERE company_id = :company
)sql";

const auto selectAttachment = fmt::format("{} AND id = :attachment", selectColumns);
const auto selectAttachments = fmt::format("{} ORDER BY transaction_id, position", selectColumns);
const auto selectUploaded =
    fmt::format("{} AND member_id = :member AND uploaded_change > :after AND uploaded_change <= :last", selectColumns);
const auto selectLinked =
    fmt::format("{} AND linked_change > 0 AND linked_change > :after AND linked_change <= :last", selectColumns);

constexpr auto countLoose = R"sql(
    SELECT COUNT(*) FROM attachments WHERE company_id = :company AND member_id = :member AND linked_change = 0
)sql";

constexpr auto insertAttachment = R"sql(
    INSERT INTO attachments (company_id, id, member_id, position, name, mime, byte_count, created_at, uploaded_change)
    VALUES (:company, :id, :member, 0, :name, :mime, :bytes, :created, :change)
)sql";

constexpr auto linkAttachment = R"sql(
    UPDATE attachments
    SET transaction_id = :entry, linked_change = :change, account_set = :set,
        position = (SELECT COUNT(*) FROM attachments WHERE company_id = :company AND transaction_id = :entry)
    WHERE company_id = :company AND id = :attachment AND transaction_id IS NULL
)sql";

struct AttachmentRow {
    StoredAttachment stored;
    int position = 0; // on its entry
};

std::vector<AttachmentRow> rowsOf(Query& query)
{
    std::vector<AttachmentRow> rows;
    AttachmentRow row;
    auto& [attachment, memberID, uploadedChange, linkedChange, accountSet] = row.stored;
    query.into(attachment.id).into(attachment.transactionID).into(attachment.name).into(attachment.mime);
    query.into(attachment.byteCount).into(attachment.createdAt).into(memberID).into(uploadedChange);
    query.into(linkedChange).into(accountSet).into(row.position);
    while (query.next())
        rows.push_back(row);
    return rows;
}

std::vector<AttachmentRow> uploadedIn(Connection& connection, const AttachmentView& view)
{
    Query query{connection, selectUploaded};
    query.bind("company", view.companyID).bind("member", view.memberID);
    query.bind("after", view.after).bind("last", view.last);
    return rowsOf(query);
}

std::vector<AttachmentRow> allLinkedIn(Connection& connection, const AttachmentView& view)
{
    Query query{connection, selectLinked};
    query.bind("company", view.companyID).bind("after", view.after).bind("last", view.last);
    return rowsOf(query);
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

std::optional<Attachment> AttachmentRepository::find(Connection& connection, std::string_view companyID,
                                                     std::string_view attachmentID)
{
    Query query{connection, selectAttachment};
    query.bind("company", companyID).bind("attachment", attachmentID);
    auto rows = rowsOf(query);
    return rows.empty() ? std::nullopt : std::optional{std::move(rows.front().stored.attachment)};
}

std::vector<StoredAttachment> AttachmentRepository::all(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectAttachments};
    query.bind("company", companyID);
    std::vector<StoredAttachment> attachments;
    for (auto& row : rowsOf(query))
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
                                  std::string_view memberID)
{
    Query{connection, insertAttachment}
        .bind("company", companyID)
        .bind("id", attachment.id)
        .bind("member", memberID)
        .bind("name", attachment.name)
        .bind("mime", attachment.mime)
        .bind("bytes", attachment.byteCount)
        .bind("created", attachment.createdAt)
        .bind("change", CompanyHistory::advance(connection, companyID).lastChange)
        .run();
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
