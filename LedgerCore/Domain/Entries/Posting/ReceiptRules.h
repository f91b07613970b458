#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Entries/Posting/PostingRefusal.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Member.h"

/// What a receipt may be, and who gives it to an entry that is recorded already.
namespace ReceiptRules {

inline constexpr std::array<std::string_view, 5> mediaTypes{"application/pdf", "image/jpeg", "image/png", "image/heic",
                                                            "image/heif"};
inline constexpr std::size_t maximumBytes = 10'485'760; // of one file
inline constexpr std::size_t nameLength = 200;          // code points

/// Whether it names a file and nothing else: no path, no control characters.
bool isName(std::string_view name);

/// Whether the member may add to the entry: those who recorded it and those who may correct it.
bool mayLink(const LedgerTransaction& entry, const Member& member);

/// What is wrong with giving these to an entry, whichever they are and whoever does it, or nothing.
std::optional<PostingReason> whyNotShaped(std::span<const std::string> ids);

/// What keeps the member from giving these receipts to the entry, or nothing. `found` are those of `ids` that the
/// member may know of.
std::optional<PostingReason> whyNotLink(const LedgerTransaction& entry, const Member& member,
                                        std::span<const std::string> ids, std::span<const Attachment> found);

/// Whether the entry carries all of them already: the command came before, and its reply was lost.
bool isLinked(const LedgerTransaction& entry, std::span<const std::string> ids);

}
