#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "LedgerService/Storage/Rows/People/MemberRepository.h"

namespace LedgerService {

/// The tokens that were in force when they were last looked at, by hash. Nothing is decided by what stands here: it
/// saves reading a member's rights again where they are found unchanged, and asking for a token twice. Used by many
/// threads.
class KnownTokens {
public:
    /// Nothing for a token that was not seen lately.
    [[nodiscard]] std::shared_ptr<const TokenHolder> find(std::string_view hash) const;

    void remember(std::string_view hash, std::shared_ptr<const TokenHolder> holder);
    void forget(std::string_view hash);

private:
    mutable std::mutex m_guard;
    std::unordered_map<std::string, std::shared_ptr<const TokenHolder>> m_holders;
};

}
