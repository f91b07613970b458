#pragma once

#include <string>
#include <vector>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerUI/tests/TemplatesUnderTest.h"

/// The rent of "bank", half typed by a program that died.
inline EntryDraft draftLeft(const std::string& key = "k1")
{
    EntryDraft draft{
        .entry = {}, .locale = "id-ID", .sent = {}, .writer = "dead", .changedAt = "2026-11-19T08:30:00.000Z"};
    draft.entry.kind = "expense";
    draft.entry.date = "2026-11-18";
    draft.entry.note = "Paid at the counter";
    draft.entry.categoryID = "rent";
    draft.entry.source = "bank";
    draft.entry.currency = "USD";
    draft.entry.amount = "12,50";
    draft.entry.idempotencyKey = key;
    return draft;
}

/// The same as it was being sent.
inline EntryDraft draftSent(const std::string& key = "k1")
{
    auto draft = draftLeft(key);
    TransactionInput input;
    input.kind = "expense";
    input.date = "2026-11-18";
    input.note = "Paid at the counter";
    input.categoryID = "rent";
    input.sourceAccountID = "bank";
    input.currency = "USD";
    input.amountMinor = 1'250;
    input.idempotencyKey = key;
    draft.sent = input;
    return draft;
}

/// Opens the demonstration at a service of our own kind, which keeps these drafts and lets others be kept.
inline void openBooksWithDrafts(WindowUnderTest& under, const std::vector<EntryDraft>& drafts)
{
    under.store.drafts().setPatience(
        {.typing = std::chrono::milliseconds{20}, .failure = std::chrono::milliseconds{20}});
    under.server.replace("GET v1/me/drafts", ServerReply::json(Json::encode(EntryDraftList{drafts})));
    for (const auto& each : drafts) {
        under.server.replace("PUT v1/me/drafts/" + each.entry.idempotencyKey, ServerReply::json("{}"));
        under.server.replace("DELETE v1/me/drafts/" + each.entry.idempotencyKey, ServerReply::json(R"({"ok":true})"));
    }
    openBooksWithTemplates(under, R"({"templates":[]})");
    waitUntil([&] { return under.server.requests("GET v1/me/drafts").size() == 1; });
    settle();
}
