#include "LedgerService/Storage/Rows/Companies/DraftRepository.h"

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr auto keyOf = [](auto& draft) -> auto& { return draft.entry.idempotencyKey; };

constexpr Columns columns{column("entry", &EntryDraft::entry),
                          column("locale", &EntryDraft::locale),
                          column("sent", &EntryDraft::sent),
                          column("writer", &EntryDraft::writer),
                          column("changed_at", &EntryDraft::changedAt),
                          column("idempotency_key", keyOf)};

const auto selectDraft =
    columns.select("FROM entry_drafts WHERE company_id = :company AND member_id = :member AND idempotency_key = :key");
const auto selectDrafts = columns.select("FROM entry_drafts WHERE company_id = :company AND member_id = :member "
                                         "ORDER BY changed_at, idempotency_key");
const auto insertDraft = columns.insert("entry_drafts", {{"company_id", ":company"}, {"member_id", ":member"}});

constexpr auto deleteDraft = R"sql(
    DELETE FROM entry_drafts WHERE company_id = :company AND member_id = :member AND idempotency_key = :key
)sql";

}

std::optional<EntryDraft> DraftRepository::find(Connection& connection, const SessionOwner& member,
                                                std::string_view key)
{
    Query query{connection, selectDraft};
    query.bind("company", member.companyID).bind("member", member.memberID).bind("key", key);
    return recordOf<EntryDraft>(query, columns);
}

std::vector<EntryDraft> DraftRepository::all(Connection& connection, const SessionOwner& member)
{
    Query query{connection, selectDrafts};
    query.bind("company", member.companyID).bind("member", member.memberID);
    return recordsOf<EntryDraft>(query, columns);
}

void DraftRepository::keep(Connection& connection, const SessionOwner& member, const EntryDraft& draft)
{
    remove(connection, member, draft.entry.idempotencyKey);
    Query query{connection, insertDraft};
    columns.bind(query.bind("company", member.companyID).bind("member", member.memberID), draft);
    query.run();
}

void DraftRepository::remove(Connection& connection, const SessionOwner& member, std::string_view key)
{
    Query query{connection, deleteDraft};
    query.bind("company", member.companyID).bind("member", member.memberID).bind("key", key).run();
}

}
