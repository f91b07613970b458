#include "LedgerCore/Client/Snapshots/EntryStream.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t roomForBlock = EntryList::blockSize * 640; // most entries take less

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

/// Whether the byte tells something about the structure of the text; inside a string, about its end.
constexpr auto tells = [] {
    std::array<bool, 256> all{};
    for (const char each : {'"', '\\', '{', '}', '[', ']', ':', ','})
        all[static_cast<unsigned char>(each)] = true;
    return all;
}();

}

void EntryStream::take(std::string_view bytes)
{
    for (std::size_t at = 0; at < bytes.size() && m_isSound;)
        at = pass(bytes, at);
}

/// Passes one byte that tells something, with the plain ones before it.
std::size_t EntryStream::pass(std::string_view bytes, std::size_t at)
{
    if (m_place == Place::within && m_depth > m_listDepth)
        return passEntry(bytes, at);
    if (m_place == Place::outside && m_depth > deepestKey) {
        const auto end = passNested(bytes, at, deepestKey);
        keep(bytes.substr(at, end - at));
        return end;
    }
    const bool mayBePlain = m_place == Place::outside || m_place == Place::within;
    auto end = at;
    while (mayBePlain && end < bytes.size() && !m_isEscaped && !tells[static_cast<unsigned char>(bytes[end])])
        ++end;
    if (end > at) {
        const auto plain = bytes.substr(at, end - at);
        if (m_isInString && m_depth <= deepestKey)
            m_text += plain;
        keep(plain);
        return end;
    }
    if (m_isInString)
        passString(bytes[at]);
    else
        passStructure(bytes[at]);
    return at + 1;
}

/// Passes the bytes of one entry, up to its end where they hold it.
std::size_t EntryStream::passEntry(std::string_view bytes, std::size_t at)
{
    const auto end = passNested(bytes, at, m_listDepth);
    keep(bytes.substr(at, end - at));
    if (m_depth == m_listDepth && bytes[end - 1] == '}')
        endOfEntry();
    return end;
}

/// Passes what is nested deeper, up to its end where the bytes hold it. Nearly all of a reply goes by here, and of it
/// only the end is of interest.
std::size_t EntryStream::passNested(std::string_view bytes, std::size_t at, std::size_t depth)
{
    while (at < bytes.size() && m_depth > depth) {
        if (m_isInString) {
            at = passRestOfString(bytes, at);
            continue;
        }
        const char byte = bytes[at++];
        if (!tells[static_cast<unsigned char>(byte)])
            continue;
        if (byte == '"')
            m_isInString = true;
        else if (byte == '{' || byte == '[')
            ++m_depth;
        else if (byte == '}' || byte == ']')
            --m_depth;
    }
    return at;
}

std::size_t EntryStream::passRestOfString(std::string_view bytes, std::size_t at)
{
    while (at < bytes.size()) {
        const auto quote = std::min(bytes.find('"', at), bytes.size());
        const auto plain = bytes.substr(at, quote - at);
        const auto backslashes = plain.size() - (plain.find_last_not_of('\\') + 1);
        const bool allBackslashes = backslashes == plain.size(); // then those before the cut count as well
        m_isEscaped = ((backslashes + (allBackslashes && m_isEscaped ? 1 : 0)) % 2) != 0;
        if (quote == bytes.size())
            return quote;
        at = quote + 1;
        if (!std::exchange(m_isEscaped, false)) {
            m_isInString = false;
            return at;
        }
    }
    return at;
}

void EntryStream::passString(char byte)
{
    if (m_depth <= deepestKey)
        m_text += byte;
    if (byte == '"' && !m_isEscaped) {
        m_isInString = false;
        if (!m_text.empty())
            m_text.pop_back();
    }
    m_isEscaped = byte == '\\' && !m_isEscaped;
    keep({&byte, 1});
}

void EntryStream::passStructure(char byte)
{
    const bool isAwaited = m_place == Place::first || m_place == Place::between || m_place == Place::next;
    if (isAwaited && isBlank(byte))
        return;
    if (byte == ']' && m_depth == m_listDepth && m_place != Place::outside) {
        endOfList();
        return;
    }
    if (m_place == Place::between) {
        m_isSound = byte == ',';
        m_place = Place::next;
        return;
    }
    if (isAwaited)
        m_place = Place::within;
    if (byte == '"') {
        m_isInString = true;
        m_text.clear();
    } else if (byte == ':' && m_depth <= deepestKey) {
        m_keys[m_depth] = m_text;
    }
    keep({&byte, 1});
    if (byte == '{' || byte == '[')
        open(byte);
    else if (byte == '}' || byte == ']')
        close(byte);
}

void EntryStream::open(char byte)
{
    const bool isList = byte == '[' && m_place == Place::outside && opensEntries();
    ++m_depth;
    if (m_depth <= deepestKey)
        m_keys[m_depth].clear();
    if (!isList)
        return;
    m_isSound = !std::exchange(m_hasEntries, true);
    m_place = Place::first;
    m_listDepth = m_depth;
}

void EntryStream::close(char byte)
{
    const bool leavesList = m_place == Place::within && m_depth <= m_listDepth;
    if (m_depth == 0 || leavesList) {
        m_isSound = false;
        return;
    }
    --m_depth;
    if (byte == '}' && m_place == Place::within && m_depth == m_listDepth)
        endOfEntry();
}

bool EntryStream::opensEntries() const
{
    constexpr std::string_view list = "transactions";
    return (m_depth == 1 && m_keys[1] == list) || (m_depth == 2 && m_keys[1] == "snapshot" && m_keys[2] == list);
}

void EntryStream::endOfEntry()
{
    if (++m_entriesInBlock < EntryList::blockSize)
        return;
    endOfBlock();
    m_place = Place::between;
}

void EntryStream::endOfList()
{
    if (m_place == Place::next) // nothing behind a comma
        m_isSound = false;
    if (m_place == Place::within)
        endOfBlock();
    m_place = Place::outside;
    m_rest += ']';
    --m_depth;
}

void EntryStream::keep(std::string_view bytes)
{
    if (m_place == Place::outside) {
        m_rest += bytes;
        return;
    }
    if (m_block.empty()) {
        m_block.reserve(roomForBlock);
        m_block = '[';
    }
    m_block += bytes;
}

void EntryStream::endOfBlock()
{
    m_block += ']';
    if (!m_blocks.add(m_block, std::exchange(m_entriesInBlock, 0)))
        m_isSound = false;
}

std::optional<SplitReply> EntryStream::finish() &&
{
    if (!m_isSound || m_place != Place::outside)
        return std::nullopt;
    auto entries = m_blocks.finish();
    if (!entries)
        return std::nullopt;
    return SplitReply{.rest = std::move(m_rest), .entries = std::move(*entries)};
}
