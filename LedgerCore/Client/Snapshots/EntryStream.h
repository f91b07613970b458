#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "LedgerCore/Client/Snapshots/EntryBlocks.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// A reply with a snapshot, or the snapshot itself, of which the entries are read already.
struct SplitReply {
    std::string rest; // the reply with an empty list in the place of its entries
    EntryList entries;

    /// Puts the entries where they belong. False when the rest brought entries of its own.
    bool complete(LedgerSnapshot& snapshot)
    {
        if (entries.empty())
            return true;
        if (!snapshot.transactions.empty())
            return false;
        snapshot.transactions = std::move(entries);
        return true;
    }
};

/// Reads the entries of a snapshot while its text arrives: they are nearly all of it. The snapshot is the text itself
/// or its member "snapshot". What is left of the text is for a decoder to judge, so that nothing is accepted here that
/// the decoder of the whole would refuse; a text that lists its entries twice is refused too.
class EntryStream {
public:
    /// The next bytes of the text, cut anywhere.
    void take(std::string_view bytes);
    /// After the last bytes. Nothing when the entries were not what they should be.
    [[nodiscard]] std::optional<SplitReply> finish() &&;

private:
    enum class Place {
        outside, // of the entries
        first,   // where the first entry or the end of the list may stand
        within,  // in the list, with what stands in it since the last block gathered in `m_block`
        between, // behind a block: a comma or the end of the list may follow
        next,    // behind that comma: another entry has to follow
    };
    static constexpr std::size_t deepestKey = 2; // of the member "transactions"

    std::size_t pass(std::string_view bytes, std::size_t at);
    std::size_t passEntry(std::string_view bytes, std::size_t at);
    std::size_t passNested(std::string_view bytes, std::size_t at, std::size_t depth);
    std::size_t passRestOfString(std::string_view bytes, std::size_t at);
    void passString(char byte);
    void passStructure(char byte);
    void open(char byte);
    void close(char byte);
    [[nodiscard]] bool opensEntries() const;
    void endOfEntry();
    void endOfList();
    void keep(std::string_view bytes);
    void endOfBlock();

    std::string m_rest = {}; // the text without its entries
    EntryBlocks m_blocks;
    std::string m_block = {}; // entries that wait to be decoded together
    std::size_t m_entriesInBlock = 0;
    std::string m_text = {};                             // of the last string that may be a key
    std::array<std::string, deepestKey + 1> m_keys = {}; // of the members that are being read, by depth
    std::size_t m_depth = 0;
    std::size_t m_listDepth = 0; // inside the list of entries
    Place m_place = Place::outside;
    bool m_isInString = false;
    bool m_isEscaped = false;
    bool m_hasEntries = false;
    bool m_isSound = true;
};
