#include "LedgerCore/Client/Snapshots/EntryStream.h"

#include <utility>
#include <vector>

#include "LedgerCore/Domain/Json/Json.h"

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

/// Passes the bytes of one entry, up to its end where they hold it. Nearly all of a reply goes by here, and of an entry
/// only its end is of interest.
std::size_t EntryStream::passEntry(std::string_view bytes, std::size_t at)
{
    auto end = at;
    auto depth = m_depth;
    for (; end < bytes.size() && depth > m_listDepth; ++end) {
        const char byte = bytes[end];
        if (!tells[static_cast<unsigned char>(byte)] && !m_isEscaped)
            continue;
        if (m_isInString) {
            if (byte == '"' && !m_isEscaped)
                m_isInString = false;
            m_isEscaped = byte == '\\' && !m_isEscaped;
        } else if (byte == '"') {
            m_isInString = true;
        } else if (byte == '{' || byte == '[') {
            ++depth;
        } else if (byte == '}' || byte == ']') {
            --depth;
        }
    }
    m_depth = depth;
    keep(bytes.substr(at, end - at));
    if (depth == m_listDepth && bytes[end - 1] == '}')
        endOfEntry();
    return end;
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
    decodeBlock();
    m_place = Place::between;
}

void EntryStream::endOfList()
{
    if (m_place == Place::next) // nothing behind a comma
        m_isSound = false;
    if (m_place == Place::within)
        decodeBlock();
    m_place = Place::outside;
    m_reply.rest += ']';
    --m_depth;
}

void EntryStream::keep(std::string_view bytes)
{
    if (m_place == Place::outside) {
        m_reply.rest += bytes;
        return;
    }
    if (m_block.empty()) {
        m_block.reserve(roomForBlock);
        m_block = '[';
    }
    m_block += bytes;
}

void EntryStream::decodeBlock()
{
    m_block += ']';
    std::vector<LedgerTransaction> entries;
    entries.reserve(std::exchange(m_entriesInBlock, 0)); // growing would move every entry twice
    const auto failed = Json::viewInto(entries, m_block);
    m_block.clear(); // its memory is for the next block
    if (failed)
        m_isSound = false;
    else
        m_reply.entries.append(std::move(entries));
}

std::optional<SplitReply> EntryStream::finish() &&
{
    if (!m_isSound || m_place != Place::outside)
        return std::nullopt;
    return std::move(m_reply);
}
