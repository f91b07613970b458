#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/TransactionInput.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// What a command must look like by itself, before any row is read.
namespace EntryShape {

inline constexpr std::size_t maximumNoteLength = 2'000;    // code points, also of a reversal's reason
inline constexpr std::size_t maximumReferenceLength = 200; // code points
inline constexpr std::size_t maximumKeyLength = 200;       // bytes
inline constexpr std::size_t maximumAttachments = 10;

/// What an optional field says; an empty text says nothing, like one that is not set.
inline std::string_view given(const std::optional<std::string>& text)
{
    return text ? std::string_view{*text} : std::string_view{};
}

std::optional<Refusal> whyNot(const TransactionInput& input);
std::optional<Refusal> whyNot(const Reversal& command);

}

}
