#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/Member.h"

namespace LedgerService {

/// What a reader learns of an entry on an account that the reader sees. The movement itself is always shown, for it is
/// part of the balance; which owner or participant it belongs to, its record and its note only to those who see capital
/// or dividends.
class EntryDisclosure {
public:
    explicit EntryDisclosure(const Member& reader);

    /// Whether a part of such an entry is not for the reader.
    [[nodiscard]] bool hidesOf(bool isOfCapital, bool isOfDividends) const;

    /// What is shown instead of an entry's JSON; nothing when the reader may see all of it.
    [[nodiscard]] std::optional<std::string> instead(std::string_view text) const;

private:
    bool m_showsCapital;
    bool m_showsDividends;
};

}
