#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"

#include <algorithm>
#include <tuple>

#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Entries/ReceiptSpace.h"
#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

struct AttachmentRow {
    StoredAttachment stored;
    int position = 0; // on its entry
};

/// A receipt as a member's snapshot tells it, and its place there.
struct SeenAttachment {
    std::int64_t seenSince = 0; // the change
    int position = 0;
    std::string id;
    std::string text;
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
const auto insertAttachment = columns.insert("attachments", {{"company_id", ":company"}});

constexpr std::string_view seenColumns = "a.id, a.transaction_id, a.name, a.mime, a.byte_count, a.created_at, "
                                         "a.linked_change, a.account_set, a.position";

const auto selectUploaded = fmt::format(R"sql(
    SELECT {}, a.uploaded_change FROM attachments a
    WHERE a.company_id = :company AND a.member_id = :member AND a.uploaded_change > :after AND a.uploaded_change <= :last
)sql",
                                        seenColumns);

const auto selectLinkedByOthers = fmt::format(R"sql(
    SELECT {}, a.linked_change FROM attachments a
    WHERE a.company_id = :company AND a.linked_change > :after AND a.linked_change <= :last AND a.member_id <> :member
)sql",
                                              seenColumns);

const auto selectOwnLinked = fmt::format(R"sql(
    SELECT {}, a.uploaded_change FROM attachments a
    WHERE a.company_id = :company AND a.linked_change > :after AND a.linked_change <= :last
        AND a.member_id = :member AND a.uploaded_change <= :after
)sql",
                                         seenColumns);

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

/// Adds those that the member sees of the rows that the statement finds in the view.
void addVisible(Connection& connection, std::string_view statement, const AttachmentView& view,
                std::vector<SeenAttachment>& found)
{
    Attachment receipt;
    std::int64_t linkedChange = 0;
    std::int64_t seenSince = 0;
    int accountSet = 0;
    int position = 0;
    Query query{connection, statement};
    query.bind("company", view.companyID).bind("member", view.memberID);
    query.bind("after", view.after).bind("last", view.last);
    query.into(receipt.id).into(receipt.transactionID).into(receipt.name).into(receipt.mime).into(receipt.byteCount);
    query.into(receipt.createdAt).into(linkedChange).into(accountSet).into(position).into(seenSince);
    while (query.next()) {
        const bool loose = linkedChange == 0 || linkedChange > view.asOf;
        if (loose)
            receipt.transactionID.reset();
        if (loose || view.seesEntriesOn(accountSet))
            found.emplace_back(seenSince, position, receipt.id, Json::encode(receipt));
    }
}

/// A view that leaves out receipts linked to nothing, whose linking change is 0. Said by the view's beginning: beside a
/// condition of its own, SQLite would begin at that and pass over all that was linked before the view.
AttachmentView ofLinked(AttachmentView view)
{
    view.after = std::max<std::int64_t>(view.after, 0);
    return view;
}

/// The receipts in the order in which the member got to see them.
std::vector<std::string> inOrder(std::vector<SeenAttachment> found)
{
    const auto key = [](const SeenAttachment& each) {
        return std::tuple{each.seenSince, each.position, std::string_view{each.id}};
    };
    std::ranges::sort(found, {}, key);
    std::vector<std::string> texts;
    texts.reserve(found.size());
    for (auto& each : found)
        texts.push_back(std::move(each.text));
    return texts;
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

std::vector<std::string> AttachmentRepository::seenIn(Connection& connection, const AttachmentView& view)
{
    std::vector<SeenAttachment> found;
    addVisible(connection, selectLinkedByOthers, ofLinked(view), found);
    addVisible(connection, selectUploaded, view, found);
    return inOrder(std::move(found));
}

std::vector<std::string> AttachmentRepository::linkedIn(Connection& connection, const AttachmentView& view)
{
    std::vector<SeenAttachment> found;
    addVisible(connection, selectOwnLinked, ofLinked(view), found);
    return inOrder(std::move(found));
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
