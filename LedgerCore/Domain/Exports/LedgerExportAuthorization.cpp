#include "LedgerCore/Domain/Exports/LedgerExportAuthorization.h"

#include <utility>

#include "LedgerCore/Domain/Exports/LedgerCSV.h"

namespace {

template <class Record>
std::vector<LedgerExportAuthorization::Named> named(const std::vector<Record>& records)
{
    std::vector<LedgerExportAuthorization::Named> names;
    names.reserve(records.size());
    for (const auto& record : records)
        names.push_back({record.id, record.name});
    return names;
}

}

LedgerExportAuthorization::Evidence LedgerExportAuthorization::Evidence::of(LedgerExportSelection selection)
{
    auto& selected = selection.snapshot;
    return {.companyName = std::move(selected.company.name),
            .accounts = named(selected.accounts),
            .members = named(selected.members),
            .categories = std::move(selected.categories),
            .transactions = std::move(selected.transactions),
            .attachments = std::move(selected.attachments)};
}

std::expected<void, ExportRefusal> LedgerExportAuthorization::validate(const LedgerSnapshot& snapshot) const
{
    const auto& member = snapshot.currentMember;
    if (snapshot.company.id != companyID || member.userID != userID || member.id != memberID)
        return std::unexpected(ExportRefusal::ledgerScopeChanged);
    auto selection = LedgerExportSelection::create(snapshot, scope);
    if (!selection)
        return std::unexpected(selection.error());
    if (Evidence::of(*std::move(selection)) != evidence)
        return std::unexpected(ExportRefusal::ledgerChanged);
    return {};
}

std::expected<LedgerExportRequest, ExportRefusal>
LedgerExportRequest::create(const LedgerSnapshot& snapshot, const LedgerExportScope& scope, std::string_view locale)
{
    auto selection = LedgerExportSelection::create(snapshot, scope);
    if (!selection)
        return std::unexpected(selection.error());
    LedgerExportRequest request;
    request.preview = selection->preview();
    request.content =
        LedgerCSV::render(selection->snapshot, locale, {.includesReceiptIndex = scope.includesReceiptIndex});
    request.filename = LedgerCSV::fileName(scope.startDate, scope.endDate);
    request.authorization = {.companyID = snapshot.company.id,
                             .userID = snapshot.currentMember.userID,
                             .memberID = snapshot.currentMember.id,
                             .scope = scope,
                             .evidence = LedgerExportAuthorization::Evidence::of(*std::move(selection))};
    return request;
}
