#include "LedgerCore/Client/Snapshots/SnapshotDelta.h"

#include <string_view>
#include <unordered_map>
#include <utility>

#include "LedgerCore/Domain/Json/Json.h"

namespace {

struct MergedCounts {
    std::int64_t entryCount = 0;
    std::int64_t attachmentCount = 0;
};
BOOST_DESCRIBE_STRUCT(MergedCounts, (), (entryCount, attachmentCount))

/// `base` with `changes`, or nothing when they do not come to `count` records. So many of them must be new and the
/// others be found, which are searched from the end: what changes is mostly young.
template <class Record>
std::optional<SharedList<Record>> merged(SharedList<Record> base, SharedList<Record> changes, std::int64_t count)
{
    const auto fresh = count - static_cast<std::int64_t>(base.size());
    if (fresh < 0 || std::cmp_greater(fresh, changes.size()))
        return std::nullopt;
    std::unordered_map<std::string_view, const Record*> changed;
    for (const auto& each : std::as_const(changes))
        changed.emplace(each.id, &each);
    if (changed.size() != changes.size())
        return std::nullopt;
    for (auto at = base.size(); at > 0 && std::cmp_greater(changed.size(), fresh); --at) {
        const auto change = changed.find(std::as_const(base)[at - 1].id);
        if (change == changed.end())
            continue;
        base[at - 1] = *change->second;
        changed.erase(change);
    }
    if (std::cmp_not_equal(changed.size(), fresh))
        return std::nullopt;
    for (const auto& each : std::as_const(changes)) {
        if (changed.contains(each.id))
            base.push_back(each);
    }
    return base;
}

}

std::optional<SnapshotDelta> SnapshotDelta::decode(SplitReply reply)
{
    const auto counts = Json::decode<MergedCounts>(reply.rest);
    if (!counts)
        return std::nullopt;
    auto changed = Json::decode<LedgerSnapshot>(reply.rest);
    if (!changed || !reply.complete(*changed))
        return std::nullopt;
    return SnapshotDelta{
        .changed = std::move(*changed), .entryCount = counts->entryCount, .attachmentCount = counts->attachmentCount};
}

std::optional<LedgerSnapshot> SnapshotDelta::appliedTo(const LedgerSnapshot& base) &&
{
    auto entries = merged(base.transactions, std::move(changed.transactions), entryCount);
    auto attachments = merged(base.attachments, std::move(changed.attachments), attachmentCount);
    if (!entries || !attachments)
        return std::nullopt;
    changed.transactions = std::move(*entries);
    changed.attachments = std::move(*attachments);
    return std::move(changed);
}
