#pragma once

#include <exception>

#include "LedgerService/Storage/Sql/DatabaseFailure.h"

namespace LedgerService {

/// Work in a transaction of its own, of which nothing is left when it fails.
namespace Anew {

/// How often the same is tried when the database gives it up in favour of others.
inline constexpr int mostTries = 8;

/// Does the work, and does it again as a whole when the database has given it up in favour of others.
template <class Work>
auto onConflict(const Work& work) -> decltype(work())
{
    for (int tries = 1;; ++tries) {
        try {
            return work();
        } catch (const std::exception& failure) {
            if (tries == mostTries || !DatabaseFailure::isConflict(failure))
                throw;
        }
    }
}

}

}
