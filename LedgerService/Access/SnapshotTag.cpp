#include "LedgerService/Access/SnapshotTag.h"

#include <charconv>
#include <limits>

#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/SnapshotKeys.h"

namespace LedgerService {

namespace {

// Hexadecimal digits.
constexpr std::size_t changeLength = 16;
constexpr std::size_t revisionLength = 8;
constexpr std::size_t sealLength = 32;

/// What a tag says to those who know the company's secret.
struct Content {
    std::uint64_t change = 0;
    std::uint32_t revision = 0; // of the settings
};

/// All of the member that decides what the member sees.
std::string rightsOf(const Member& member)
{
    Member rights;
    rights.id = member.id;
    rights.role = member.role;
    rights.accountIDs = member.accountIDs;
    rights.active = member.active;
    rights.permissions = member.permissions;
    rights.accountGrants = member.accountGrants;
    return Json::encode(rights);
}

/// Makes and reads the tags of one reader.
class Sealing {
public:
    Sealing(Connection& connection, std::string_view companyID, const Member& reader)
        : m_connection(connection), m_companyID(companyID), m_rights(rightsOf(reader)),
          m_key(SnapshotKeys::find(connection, companyID))
    {
    }

    /// Differs by the content, the company, the member's rights, the shape of what is sent, and the last entry up to
    /// the change: books that went another way have another.
    [[nodiscard]] std::string sealOf(const Content& content) const
    {
        static const auto shape = FragmentRepository::shape();
        const auto last =
            EntryRepository::lastIDUpTo(m_connection, m_companyID, static_cast<std::int64_t>(content.change));
        return Random::digest(fmt::format("{}\n{}\n{}\n{}\n{}\n{}\n{}", m_key, content.change, content.revision,
                                          m_companyID, m_rights, shape, last))
            .substr(0, sealLength);
    }

    [[nodiscard]] std::string textOf(const Content& content) const
    {
        const auto seal = sealOf(content);
        const auto hidden = masked(content, seal);
        return fmt::format("\"{:016x}{:08x}{}\"", hidden.change, hidden.revision, seal);
    }

    /// What the text says; nothing when this reader never got it.
    [[nodiscard]] std::optional<Content> contentOf(std::string_view text) const
    {
        if (text.size() != changeLength + revisionLength + sealLength + 2 || !text.starts_with('"') ||
            !text.ends_with('"'))
            return std::nullopt;
        const auto seal = text.substr(1 + changeLength + revisionLength, sealLength);
        Content hidden;
        if (!read(text.substr(1, changeLength), hidden.change) ||
            !read(text.substr(1 + changeLength, revisionLength), hidden.revision))
            return std::nullopt;
        const auto content = masked(hidden, seal);
        const bool possible = content.change <= std::uint64_t{std::numeric_limits<std::int64_t>::max()};
        return possible && sealOf(content) == seal ? std::optional{content} : std::nullopt;
    }

private:
    template <class Number>
    static bool read(std::string_view text, Number& number)
    {
        const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
        return failure == std::errc{} && end == text.data() + text.size();
    }

    /// The content made unreadable, or readable again: the seal is another one for every content.
    [[nodiscard]] Content masked(const Content& content, std::string_view seal) const
    {
        const auto digits = Random::digest(fmt::format("mask\n{}\n{}", m_key, seal));
        Content mask;
        read(std::string_view{digits}.substr(0, changeLength), mask.change);
        read(std::string_view{digits}.substr(changeLength, revisionLength), mask.revision);
        return {content.change ^ mask.change, content.revision ^ mask.revision};
    }

    Connection& m_connection;
    std::string_view m_companyID;
    std::string m_rights;
    std::string m_key;
};

}

SnapshotTag SnapshotTag::current(Connection& connection, std::string_view companyID, const Member& reader,
                                 const CompanyState& state)
{
    const Content content{static_cast<std::uint64_t>(state.lastChange),
                          static_cast<std::uint32_t>(state.settingsRevision)};
    return {state.lastChange, Sealing{connection, companyID, reader}.textOf(content)};
}

std::optional<SnapshotTag> SnapshotTag::earlier(Connection& connection, std::string_view companyID,
                                                const Member& reader, const CompanyState& state, std::string_view text)
{
    const auto content = Sealing{connection, companyID, reader}.contentOf(text);
    if (!content || content->change > static_cast<std::uint64_t>(state.lastChange))
        return std::nullopt;
    return SnapshotTag{static_cast<std::int64_t>(content->change), std::string{text}};
}

}
