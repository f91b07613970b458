#include "LedgerCore/Client/Snapshots/SnapshotDelta.h"

#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Json/Json.h"

namespace {

struct MergedCounts {
    std::int64_t entryCount = 0;
    std::int64_t attachmentCount = 0;
};
BOOST_DESCRIBE_STRUCT(MergedCounts, (), (entryCount, attachmentCount))

/// `base` with `changes`, or nothing when they come to another number of records.
template <class Record>
std::optional<std::vector<Record>> merged(const std::vector<Record>& base, std::vector<Record> changes,
                                          std::int64_t count)
{
    if (changes.empty() && std::cmp_equal(base.size(), count))
        return base;
    std::unordered_map<std::string_view, Record*> changed;
    for (auto& each : changes)
        changed.emplace(each.id, &each);
    std::vector<Record> all;
    all.reserve(base.size() + changes.size());
    std::vector<const Record*> replaced;
    for (const auto& each : base) {
        const auto change = changed.find(each.id);
        if (change == changed.end()) {
            all.push_back(each);
            continue;
        }
        all.push_back(*change->second);
        replaced.push_back(change->second);
    }
    for (const auto* each : replaced)
        changed.erase(each->id);
    for (auto& each : changes) {
        if (changed.contains(each.id))
            all.push_back(each);
    }
    return std::cmp_equal(all.size(), count) ? std::optional{std::move(all)} : std::nullopt;
}

}

std::optional<SnapshotDelta> SnapshotDelta::decode(std::string text)
{
    const auto counts = Json::decode<MergedCounts>(text);
    if (!counts)
        return std::nullopt;
    auto changed = Json::consume<LedgerSnapshot>(std::move(text));
    if (!changed)
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
