#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "LedgerCore/Domain/TransactionInput.h"
#include "LedgerService/Refusal.h"

/// What a command must look like by itself, before any row is read.
namespace EntryShape {

inline constexpr std::size_t maximumNoteLength = 2'000;    // code points, also of a reversal's reason
inline constexpr std::size_t maximumReferenceLength = 200; // code points
inline constexpr std::size_t maximumKeyLength = 200;       // bytes
inline constexpr std::size_t maximumAttachments = 10;

/// Whether an optional field says anything; an empty text names nothing.
bool isGiven(const std::optional<std::string>& text);

std::optional<Refusal> whyNot(const TransactionInput& input);
std::optional<Refusal> whyNot(const Reversal& command);

}
