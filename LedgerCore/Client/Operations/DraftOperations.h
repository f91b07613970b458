#pragma once

#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryDraft.h"
#include "LedgerCore/Domain/Records/Requests/Replies.h"

class OperationRunner;

/// What the store can have done to the member's drafts that the service keeps. All of it goes beside what a person does
/// and never says a word. Only for services that keep more than the books.
class DraftOperations {
public:
    QCoro::Task<Result<EntryDraftList>> loadDrafts();
    QCoro::Task<Result<DraftKept>> keepDraft(DraftKeep draft);
    QCoro::Task<Result<OK>> discardDraft(std::string key, DraftDiscard by);

protected:
    explicit DraftOperations(OperationRunner& runner) : m_runner{runner} {}
    ~DraftOperations() = default;

private:
    OperationRunner& m_runner;
};
