#include "LedgerService/Commands/DraftCommands.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Entries/PostingShape.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Commands/EntryCommands.h"
#include "LedgerService/Storage/Rows/Companies/CommandRepository.h"
#include "LedgerService/Storage/Rows/Companies/DraftRepository.h"

namespace LedgerService {

namespace {

constexpr std::size_t maximumMarkBytes = 64; // of a program's mark, a tag of a language
constexpr std::string_view entryMark = "entry:";

bool isMark(std::string_view text)
{
    return !TextFold::trimmed(text).empty() && text.size() <= maximumMarkBytes;
}

SessionOwner ownerOf(const CommandAct& act)
{
    return {act.companyID, act.member.id};
}

/// Makes room for one more; false when there is none to be made.
bool makeRoom(const CommandAct& act, std::string_view key)
{
    const auto kept = DraftRepository::all(act.connection, ownerOf(act));
    const auto hasKey = [key](const EntryDraft& each) { return each.entry.idempotencyKey == key; };
    if (kept.size() < DraftCommands::mostOfMember || std::ranges::any_of(kept, hasKey))
        return true;
    const auto oldest = std::ranges::find_if(kept, [](const EntryDraft& each) { return !each.sent; });
    if (oldest == kept.end())
        return false;
    DraftRepository::remove(act.connection, ownerOf(act), oldest->entry.idempotencyKey);
    return true;
}

/// The entry of somebody else that stands for the due day of what was sent.
std::optional<std::string> standingFor(const CommandAct& act, const std::optional<TransactionInput>& sent)
{
    std::vector<PostingRefusal> refusals;
    if (sent)
        PostingShape::judge(*sent, refusals);
    return sent && refusals.empty() ? EntryCommands::standingFor(act, *sent) : std::nullopt;
}

}

std::optional<Refusal> DraftCommands::whyNotShaped(const DraftKeep& draft)
{
    if (draft.sent && draft.sent->idempotencyKey != draft.entry.idempotencyKey)
        return Refusal::of(ServiceCode::validationError, "A draft has one key, also as it was sent.");
    if (!isMark(draft.writer) || !isMark(draft.locale))
        return Refusal::of(ServiceCode::validationError, "A draft names its program and its language.");
    return std::nullopt;
}

EntryDraftList DraftCommands::list(const CommandAct& act)
{
    return {DraftRepository::all(act.connection, ownerOf(act))};
}

std::expected<DraftKept, Refusal> DraftCommands::keep(const CommandAct& act, std::string_view key,
                                                      const DraftKeep& draft)
{
    act.note.isPrivate = true;
    if (key != draft.entry.idempotencyKey)
        return std::unexpected(Refusal::of(ServiceCode::validationError, "The path names another key than the draft."));
    const auto owner = ownerOf(act);
    if (const auto command = CommandRepository::find(act.connection, owner, key)) {
        if (!command->outcome.starts_with(entryMark))
            return std::unexpected(
                Refusal::of(ServiceCode::idempotencyConflict, "The key belongs to another command."));
        DraftRepository::remove(act.connection, owner, key);
        return DraftKept{.recordedEntryID = command->outcome.substr(entryMark.size())};
    }
    if (auto entryID = standingFor(act, draft.sent)) {
        DraftRepository::remove(act.connection, owner, key);
        return DraftKept{.recordedEntryID = *std::move(entryID)};
    }
    const auto before = DraftRepository::find(act.connection, owner, key);
    if (before && before->writer != draft.writer && before->writer != draft.takenFrom)
        return std::unexpected(Refusal::of(ServiceCode::conflict, "Another program goes on with this draft."));
    if (!makeRoom(act, key))
        return std::unexpected(
            Refusal::of(ServiceCode::rateLimited, "The member has too many drafts that were being sent."));
    DraftRepository::keep(act.connection, owner,
                          {.entry = draft.entry,
                           .locale = draft.locale,
                           .sent = draft.sent,
                           .writer = draft.writer,
                           .changedAt = act.now});
    return DraftKept{};
}

void DraftCommands::discard(const CommandAct& act, std::string_view key)
{
    act.note.isPrivate = true;
    DraftRepository::remove(act.connection, ownerOf(act), key);
}

}
