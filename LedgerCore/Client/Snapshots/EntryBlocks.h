#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Decodes blocks of entries while their text arrives: on the thread that hands them over and, when more of them wait,
/// on one worker beside it. What it gives does not depend on who decoded which.
class EntryBlocks {
public:
    EntryBlocks();
    EntryBlocks(const EntryBlocks&) = delete;
    EntryBlocks& operator=(const EntryBlocks&) = delete;
    ~EntryBlocks();

    /// The next block: the text of a list of so many entries, for which an empty one is given back whose room was used
    /// before. Decodes one itself when too many wait. False when a block was not what it should be: more are in vain.
    [[nodiscard]] bool add(std::string& text, std::size_t entries);
    /// The entries of all blocks in their order, or nothing when one was not what it should be. Waits for no worker
    /// that has not begun.
    [[nodiscard]] std::optional<EntryList> finish();

private:
    struct Work;

    std::shared_ptr<Work> m_work;
};
