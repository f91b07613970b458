#pragma once

#include <algorithm>
#include <cstddef>

namespace LedgerService {

/// Bytes that all connections hold together. Only the network thread uses it.
class ByteBudget {
public:
    explicit ByteBudget(std::size_t most) : m_most(most) {}

    [[nodiscard]] std::size_t held() const { return m_held; }

    /// One holder's part of the budget; given back with its object.
    class Share {
    public:
        Share(ByteBudget& budget, std::size_t uncounted) : m_budget(budget), m_uncounted(uncounted) {}
        ~Share() { release(); }
        Share(const Share&) = delete;
        Share& operator=(const Share&) = delete;

        /// Asks for `bytes` in all, of which the first few are not counted. A holder without rivals gets what it asks.
        [[nodiscard]] bool resize(std::size_t bytes)
        {
            const auto wanted = bytes - std::min(bytes, m_uncounted);
            const auto others = m_budget.m_held - m_counted;
            if (wanted > m_counted && others > 0 && others + wanted > m_budget.m_most)
                return false;
            m_budget.m_held = others + wanted;
            m_counted = wanted;
            return true;
        }

        /// Whether twice as much would leave half of the budget to others.
        [[nodiscard]] bool fitsTwice() const { return m_budget.m_held + m_counted <= m_budget.m_most / 2; }

        void release()
        {
            m_budget.m_held -= m_counted;
            m_counted = 0;
        }

        [[nodiscard]] bool isCounted() const { return m_counted > 0; }

    private:
        ByteBudget& m_budget;
        std::size_t m_uncounted;
        std::size_t m_counted = 0;
    };

private:
    std::size_t m_most;
    std::size_t m_held = 0;
};

}
