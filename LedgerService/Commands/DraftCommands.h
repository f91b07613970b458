#pragma once

#include <expected>
#include <optional>
#include <string_view>

#include "LedgerCore/Domain/Entries/Drafts/EntryDraft.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Keeping what a member has begun and not recorded. It is the member's own: nobody else is told of it, and it is no
/// part of the books.
namespace DraftCommands {

inline constexpr std::size_t mostOfMember = 20;

/// What is wrong with a draft by itself.
std::optional<Refusal> whyNotShaped(const DraftKeep& draft);
std::optional<Refusal> whyNotShaped(const DraftDiscard& by);

EntryDraftList list(const CommandAct& act);

/// Nothing is kept under a key whose entry is recorded, nor of what was sent for a due day for which somebody else has
/// recorded it; the reply names that entry. Where there are too many, the one
/// that nobody has changed for the longest time goes, unless it was being sent.
std::expected<DraftKept, Refusal> keep(const CommandAct& act, std::string_view key, const DraftKeep& draft);

/// Where another program goes on with the draft, it stays that one's.
std::expected<void, Refusal> discard(const CommandAct& act, std::string_view key, const DraftDiscard& by);

}

}
