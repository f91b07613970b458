#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <QCoro/QCoroTask>
#include <QString>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Client/Files/FileSaving.h"
#include "LedgerUI/Presentation/Print/PrintHead.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportPart.h"

class LedgerStore;

/// What leaves the reports page on paper or as a file.
namespace ReportExport {

/// The report that a page shows, of these books. Called on a worker.
ReportSheet ofBooks(const ReportSheet& shown, SnapshotPointer books, std::string locale);

/// Whether the books still say what the report was worked out from, for the person who sees it: asked of the service
/// for each currency of the report.
QCoro::Task<Result<void>> permission(LedgerStore* store, ReportSheetPointer sheet, ReportPart part);

/// The same, asked of the report of these books: of another one than the page still shows, where they are newer.
QCoro::Task<Result<void>> permissionNow(LedgerStore* store, ReportSheetPointer shown, SnapshotPointer books,
                                        ReportPart part);

/// What is different between two states of a report, a line for each currency: "USD: 2 entries added". Empty where
/// nothing of it can be named.
QCoro::Task<QString> changes(ReportSheetPointer before, ReportSheetPointer now, ReportPart part);

/// Whether a failure says that the books have changed since.
bool saysChanged(const Failure& failure);

/// One table of a report that can be saved.
struct Choice {
    std::string tableID;
    QString name;
    std::size_t rows = 0; // without its head
    QString fileName;
};
std::vector<Choice> choices(const ReportSheet& sheet, ReportPart part, const PrintMoment& moment);

/// What the report is about, said beside its file: period, accounts and currency.
std::vector<PrintedFact> scope(const ReportSheet& sheet, ReportPart part);

/// A table with all its rows for a spreadsheet, however many of them the page shows. Made on a worker.
QCoro::Task<QString> spreadsheetText(ReportSheetPointer sheet, ReportPart part, std::string tableID);

struct Saved {};
using Outcome = std::variant<Saved, Failure, SavingProblem>;
/// Writes a table as a CSV file if the books still say the same. Nothing is written otherwise.
QCoro::Task<Outcome> save(LedgerStore* store, ReportSheetPointer sheet, ReportPart part, std::string tableID,
                          std::filesystem::path path);

}
