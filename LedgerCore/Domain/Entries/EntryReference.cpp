#include "LedgerCore/Domain/Entries/EntryReference.h"

#include <algorithm>

#include "LedgerCore/Domain/Text/TextFold.h"

std::string_view EntryReference::of(const TransactionInput& input)
{
    return input.externalReference ? TextFold::trimmed(*input.externalReference) : std::string_view{};
}

std::string EntryReference::folded(std::string_view reference)
{
    std::string text{TextFold::trimmed(reference)};
    std::ranges::transform(text, text.begin(), [](char each) {
        return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
    });
    return text;
}
