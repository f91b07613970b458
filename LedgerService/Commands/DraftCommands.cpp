#include "LedgerService/Commands/DraftCommands.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Entries/Posting/PostingShape.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
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

/// Whether whoever asks has not seen the draft as it is now.
std::optional<Refusal> whyNotTheirs(const std::optional<EntryDraft>& before, std::string_view writer,
                                    const std::optional<std::string>& takenFrom)
{
    if (!before || before->writer == writer || before->writer == takenFrom)
        return std::nullopt;
    return Refusal::of(ServiceCode::conflict, "Another program goes on with this draft.");
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

std::optional<Refusal> DraftCommands::whyNotShaped(const DraftDiscard& by)
{
    if (isMark(by.writer) && (!by.takenFrom || isMark(*by.takenFrom)))
        return std::nullopt;
    return Refusal::of(ServiceCode::validationError, "Giving a draft up names the program that does.");
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
    if (auto refusal = whyNotTheirs(before, draft.writer, draft.takenFrom))
        return std::unexpected(*std::move(refusal));
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

std::expected<void, Refusal> DraftCommands::discard(const CommandAct& act, std::string_view key, const DraftDiscard& by)
{
    act.note.isPrivate = true;
    const auto owner = ownerOf(act);
    if (auto refusal = whyNotTheirs(DraftRepository::find(act.connection, owner, key), by.writer, by.takenFrom))
        return std::unexpected(*std::move(refusal));
    DraftRepository::remove(act.connection, owner, key);
    return {};
}

}
