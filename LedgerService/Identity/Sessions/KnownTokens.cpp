#include "LedgerService/Identity/Sessions/KnownTokens.h"

#include <cstddef>
#include <utility>

namespace LedgerService {

namespace {

/// A token takes some kilobytes with the rights of its member. Past this many all are looked at again.
constexpr std::size_t mostTokens = 1024;

}

std::shared_ptr<const TokenHolder> KnownTokens::find(std::string_view hash) const
{
    const std::string key{hash};
    const std::lock_guard guard{m_guard};
    const auto found = m_holders.find(key);
    return found == m_holders.end() ? nullptr : found->second;
}

void KnownTokens::remember(std::string_view hash, std::shared_ptr<const TokenHolder> holder)
{
    std::string key{hash};
    const std::lock_guard guard{m_guard};
    if (m_holders.size() >= mostTokens && !m_holders.contains(key))
        m_holders.clear();
    m_holders.insert_or_assign(std::move(key), std::move(holder));
}

void KnownTokens::forget(std::string_view hash)
{
    const std::string key{hash};
    const std::lock_guard guard{m_guard};
    m_holders.erase(key);
}

}
