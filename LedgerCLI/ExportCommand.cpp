#include "LedgerCLI/ExportCommand.h"

#include "LedgerCLI/BookFiles.h"
#include "LedgerCLI/CommandWords.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Exports/CapitalCSV.h"
#include "LedgerCore/Domain/Exports/DividendCSV.h"
#include "LedgerCore/Domain/Exports/LedgerExportAuthorization.h"

namespace LedgerCLI {

namespace {

CommandResult refusal(std::string_view key, std::string_view locale)
{
    return std::unexpected(CommandFailure{ExitCode::refused, std::string{CommandWords::text(key, locale)}});
}

CommandResult write(const ExportCommand::Target& target, const std::string& ownName, std::string content,
                    std::string_view locale)
{
    return BookFiles::write(target.path.empty() ? ownName : target.path, std::move(content), locale);
}

}

CommandResult ExportCommand::ledger(const LedgerSnapshot& snapshot, LedgerExportScope scope, const Target& target,
                                    std::string_view locale)
{
    if (!LedgerDay::isValid(scope.startDate) || !LedgerDay::isValid(scope.endDate) || scope.endDate < scope.startDate)
        return std::unexpected(
            CommandFailure{ExitCode::usage, CommandWords::filled("badDay", locale, {scope.startDate, scope.endDate})});
    if (scope.kinds.empty()) {
        for (const auto& entry : snapshot.transactions)
            scope.kinds.insert(entry.kind);
    }
    auto request = LedgerExportRequest::create(snapshot, scope, locale);
    if (!request)
        return refusal(request.error() == ExportRefusal::forbidden ? "exportForbidden" : "scopeUnseen", locale);
    return write(target, request->filename, std::move(request->content), locale);
}

CommandResult ExportCommand::capital(const LedgerSnapshot& snapshot, const Target& target, std::string_view locale)
{
    if (!MemberRights::canExportCapital(snapshot.currentMember))
        return refusal("exportForbidden", locale);
    if (!snapshot.capital)
        return refusal("noCapital", locale);
    return write(target, CapitalCSV::fileName(target.today), CapitalCSV::render(*snapshot.capital), locale);
}

CommandResult ExportCommand::dividends(const LedgerSnapshot& snapshot, const Target& target, std::string_view locale)
{
    if (!MemberRights::canExportDividends(snapshot.currentMember))
        return refusal("exportForbidden", locale);
    if (!snapshot.dividends)
        return refusal("noDividends", locale);
    return write(target, DividendCSV::fileName(target.today), DividendCSV::render(*snapshot.dividends, locale), locale);
}

}
