#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Text/TextFold.h"

/// What texts of a command must be like.
namespace EntryText {

/// What an optional field says; an empty text says nothing, like one that is not set.
inline std::string_view given(const std::optional<std::string>& text)
{
    return text ? std::string_view{*text} : std::string_view{};
}

/// A NUL would end the text early in some stores and files.
inline bool isSound(std::string_view text)
{
    return TextFold::isValidUtf8(text) && !text.contains('\0');
}

inline bool fitsNote(std::string_view text)
{
    return text.size() <= EntryLimits::noteLength || TextFold::length(text) <= EntryLimits::noteLength;
}

inline bool fitsReference(std::string_view text)
{
    return text.size() <= EntryLimits::referenceLength || TextFold::length(text) <= EntryLimits::referenceLength;
}

inline bool isKey(std::string_view key)
{
    return !key.empty() && key.size() <= EntryLimits::keyBytes;
}

}
