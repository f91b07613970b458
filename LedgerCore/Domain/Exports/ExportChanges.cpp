#include "LedgerCore/Domain/Exports/ExportChanges.h"

#include <string_view>
#include <unordered_map>

namespace {

using Renamed = ExportChanges::Renamed;

void compareEntries(ExportChanges& changes, const EntryList& before, const EntryList& now)
{
    std::unordered_map<std::string_view, const LedgerTransaction*> earlier;
    earlier.reserve(before.size());
    for (const auto& entry : before)
        earlier.emplace(entry.id, &entry);
    std::size_t kept = 0;
    for (const auto& entry : now) {
        const auto found = earlier.find(entry.id);
        if (found == earlier.end()) {
            ++changes.added;
            continue;
        }
        ++kept;
        changes.edited += *found->second == entry ? 0 : 1;
    }
    changes.removed = earlier.size() - kept;
}

/// Records that came or went with their entries are not named.
template <class Named>
void compareNames(ExportChanges& changes, const std::vector<Named>& before, const std::vector<Named>& now)
{
    std::unordered_map<std::string_view, std::string_view> names;
    for (const auto& each : before)
        names.emplace(each.id, each.name);
    for (const auto& each : now) {
        const auto found = names.find(each.id);
        if (found != names.end() && found->second != each.name)
            changes.renamed.push_back({std::string{found->second}, each.name});
    }
}

/// Whether one that both lists hold reads otherwise now.
template <class Records>
bool hasEdited(const Records& before, const Records& now)
{
    std::unordered_map<std::string_view, const typename Records::value_type*> earlier;
    for (const auto& each : before)
        earlier.emplace(each.id, &each);
    for (const auto& each : now) {
        const auto found = earlier.find(each.id);
        if (found != earlier.end() && *found->second != each)
            return true;
    }
    return false;
}

/// What both kinds of export show.
template <class Evidence>
ExportChanges compared(const Evidence& before, const Evidence& now)
{
    ExportChanges changes;
    compareEntries(changes, before.transactions, now.transactions);
    if (before.companyName != now.companyName)
        changes.renamed.push_back({before.companyName, now.companyName});
    compareNames(changes, before.accounts, now.accounts);
    changes.hasOtherCategories = hasEdited(before.categories, now.categories);
    return changes;
}

}

ExportChanges ExportChanges::between(const LedgerExportAuthorization::Evidence& before,
                                     const LedgerExportAuthorization::Evidence& now)
{
    auto changes = compared(before, now);
    compareNames(changes, before.members, now.members);
    // One that came with a new entry is told with that entry; one that the member may no longer list went without.
    changes.hasOtherReceipts = hasEdited(before.attachments, now.attachments) ||
                               (before.attachments.size() != now.attachments.size() && changes.added == 0 &&
                                changes.removed == 0 && changes.edited == 0);
    return changes;
}

ExportChanges ExportChanges::between(const ReportExportAuthorization::Evidence& before,
                                     const ReportExportAuthorization::Evidence& now)
{
    auto changes = compared(before, now);
    changes.hasOtherSettings =
        before.bookkeepingStartDate != now.bookkeepingStartDate || before.initializationMode != now.initializationMode;
    return changes;
}
