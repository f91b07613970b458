#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <QCoro/QCoroTask>
#include <QString>

#include "LedgerCore/Domain/Imports/ImportDryRun.h"
#include "LedgerCore/Domain/Imports/ImportEffects.h"
#include "LedgerCore/Domain/Imports/LedgerImportPlan.h"
#include "LedgerUI/Presentation/Table/PlainTableModel.h"

/// What a file of older entries asks to record, or all that is wrong with it.
struct ImportReading {
    std::filesystem::path path;
    std::string text; // what stands in it; empty where it is too large
    std::size_t bytes = 0;
    bool isUnreadable = false; // the file itself could not be opened
    SnapshotPointer books;     // against which it was read
    LedgerImportPlan plan;
    std::vector<ImportRefusal> refusals; // of a plan without issues
    std::vector<ImportEffect> effects;   // of a plan that may be sent
    std::size_t recordedBefore = 0;

    [[nodiscard]] std::size_t issueCount() const { return plan.issues.size() + refusals.size(); }
    [[nodiscard]] std::size_t rowCount() const;
    /// Whether there is something to send and nothing speaks against it.
    [[nodiscard]] bool isReady() const;
};

using ImportReadingPointer = std::shared_ptr<const ImportReading>;

/// Reading a file and showing what was found in it.
namespace LedgerImport {

/// At most so many issues are shown; the rest is counted.
inline constexpr std::size_t issuesShown = 1'000;

struct Table {
    std::vector<PlainColumn> columns;
    std::vector<PlainRow> rows;
};
/// A reading with what is shown of it: its issues, or the entries of a plan without any.
struct Answer {
    ImportReadingPointer reading;
    Table table;
};
/// On a worker; writes nothing.
QCoro::Task<Answer> read(std::filesystem::path path, SnapshotPointer books, std::string today, std::string locale);

/// "184 KB, 312 data rows".
QString sizeText(const ImportReading& reading, std::string_view locale);
/// What keeps the file from being imported as a whole, in words; empty when nothing does.
QString problem(const ImportReading& reading, std::string_view locale);

/// What an answer shows, in words of this language.
Table found(const ImportReading& reading, std::string_view locale);
/// Every row stands in the column of its line, with the stretched column in the fourth place.
Table issues(const ImportReading& reading, std::string_view locale);
Table entries(const ImportReading& reading, std::string_view locale);
Table effects(const ImportReading& reading, std::string_view locale);

/// The issue of this row in full, and what to do about it.
QString issueText(const ImportReading& reading, std::string_view rowID, std::string_view locale);
/// Every issue with its line, column and value, parted by tabs for the clipboard.
QString issuesText(const ImportReading& reading, std::string_view locale);
/// Whether the rows of the file can be told from each other, so that issues can be written beside them.
bool hasRows(const ImportReading& reading);
/// The file itself with its issues in a last column, to be mended and imported.
std::string issuesFile(const ImportReading& reading, std::string_view locale);

}
