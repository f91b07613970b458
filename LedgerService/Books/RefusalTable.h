#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "LedgerService/Refusal.h"

namespace LedgerService {

/// The code that clients know, and words for the operator.
struct RefusalAnswer {
    std::string_view code; // a `ServiceCode`
    std::string_view words;
};

/// One reason of a rule with its answer.
template <class Reason>
struct RefusalRow {
    constexpr RefusalRow(Reason of, RefusalAnswer said) : reason(of), answer(said) {}
    constexpr RefusalRow(Reason of, std::string_view saidBy, std::string_view saying)
        : reason(of), answer{saidBy, saying}
    {
    }

    Reason reason;
    RefusalAnswer answer;
};

/// How the service says the reasons of one rule: a row for each, in the order of the enumeration. A table that leaves
/// one out does not compile.
template <class Reason, std::size_t count>
class RefusalTable {
public:
    consteval RefusalTable(const RefusalRow<Reason> (&rows)[count], Reason last) : m_rows(std::to_array(rows))
    {
        for (std::size_t at = 0; at < count; ++at) {
            if (static_cast<std::size_t>(rows[at].reason) != at || static_cast<std::size_t>(last) + 1 != count)
                throw "a reason has no row";
        }
    }

    [[nodiscard]] Refusal of(Reason reason) const
    {
        const auto& answer = m_rows.at(static_cast<std::size_t>(reason)).answer;
        return Refusal::of(answer.code, std::string{answer.words});
    }

private:
    std::array<RefusalRow<Reason>, count> m_rows;
};

}
