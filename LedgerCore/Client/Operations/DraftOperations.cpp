#include "LedgerCore/Client/Operations/DraftOperations.h"

#include <utility>

#include "LedgerCore/Client/Operations/OperationRunner.h"

QCoro::Task<Result<EntryDraftList>> DraftOperations::loadDrafts()
{
    return m_runner.askBeside<EntryDraftList>({.path = "v1/me/drafts"});
}

QCoro::Task<Result<DraftKept>> DraftOperations::keepDraft(DraftKeep draft)
{
    return m_runner.askBeside<DraftKept>(
        {.method = "PUT", .path = "v1/me/drafts/" + draft.entry.idempotencyKey, .body = Json::encode(draft)});
}

QCoro::Task<Result<OK>> DraftOperations::discardDraft(std::string key, DraftDiscard by)
{
    APIRequest request{.method = "DELETE", .path = "v1/me/drafts/" + key, .query = {{"writer", std::move(by.writer)}}};
    if (by.takenFrom)
        request.query.push_back({"takenFrom", *std::move(by.takenFrom)});
    return m_runner.askBeside<OK>(std::move(request));
}
