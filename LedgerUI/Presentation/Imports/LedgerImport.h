#pragma once

#include <filesystem>
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

/// Reading a file and showing what was found in it.
namespace LedgerImport {

/// At most so many rows are shown; the rest is counted.
inline constexpr std::size_t issuesShown = 8;
inline constexpr std::size_t entriesShown = 200;

/// On a worker; writes nothing.
QCoro::Task<ImportReading> read(std::filesystem::path path, SnapshotPointer books, std::string today);

/// "184 KB, 312 data rows".
QString sizeText(const ImportReading& reading, std::string_view locale);
/// What keeps the file from being imported as a whole, in words; empty when nothing does.
QString problem(const ImportReading& reading, std::string_view locale);

struct Table {
    std::vector<PlainColumn> columns;
    std::vector<PlainRow> rows;
};
Table issues(const ImportReading& reading, std::string_view locale);
Table entries(const ImportReading& reading, std::string_view locale);
Table effects(const ImportReading& reading, std::string_view locale);

/// Every issue with its line and value, parted by tabs for the clipboard.
QString issuesText(const ImportReading& reading, std::string_view locale);
/// The same as a file.
std::string issuesFile(const ImportReading& reading, std::string_view locale);

}
