#include "LedgerService/Access/SnapshotTag.h"

#include <charconv>

#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"

namespace LedgerService {

namespace {

constexpr std::size_t lineageLength = 32; // hexadecimal digits

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

std::string lineageAt(Connection& connection, std::string_view companyID, const Member& reader, std::int64_t change)
{
    static const auto shape = FragmentRepository::shape();
    const auto last = EntryRepository::lastIDUpTo(connection, companyID, change);
    return Random::digest(fmt::format("{}\n{}\n{}\n{}", companyID, rightsOf(reader), shape, last))
        .substr(0, lineageLength);
}

/// Takes a number and the dot after it off the front.
template <class Number>
bool take(std::string_view& text, Number& number)
{
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc{} || end == text.data() + text.size() || *end != '.' || number < 0)
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    return true;
}

}

std::string SnapshotTag::text() const
{
    return fmt::format("\"{}.{}.{}\"", change, settingsRevision, lineage);
}

std::optional<SnapshotTag> SnapshotTag::parse(std::string_view text)
{
    if (text.size() < 2 || !text.starts_with('"') || !text.ends_with('"'))
        return std::nullopt;
    text = text.substr(1, text.size() - 2);
    SnapshotTag tag;
    if (!take(text, tag.change) || !take(text, tag.settingsRevision) || text.size() != lineageLength)
        return std::nullopt;
    tag.lineage = text;
    return tag;
}

SnapshotTag SnapshotTag::current(Connection& connection, std::string_view companyID, const Member& reader,
                                 const CompanyState& state)
{
    return {.change = state.lastChange,
            .settingsRevision = state.settingsRevision,
            .lineage = lineageAt(connection, companyID, reader, state.lastChange)};
}

bool SnapshotTag::isEarlierStateOf(Connection& connection, std::string_view companyID, const Member& reader,
                                   const CompanyState& state) const
{
    return change <= state.lastChange && lineage == lineageAt(connection, companyID, reader, change);
}

}
