#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <QCoro/QCoroTask>
#include <QString>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Client/Files/FileSaving.h"
#include "LedgerCore/Domain/Exports/LedgerExportSelection.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

class LedgerStore;
struct LedgerFilter;

/// What a person chose before the ledger is exported. Days are "YYYY-MM-DD", empty while what was typed names none; no
/// chosen account or currency stands for every one that the member sees.
struct LedgerExportForm {
    using Choices = std::set<std::string, std::less<>>;

    std::string firstDay;
    std::string lastDay;
    Choices accountIDs;
    Choices currencies;
    Choices kinds; // `EntryKind`s
    bool includesReceiptIndex = false;

    bool operator==(const LedgerExportForm&) const = default;
};

/// The export of the ledger as it is asked for, previewed and saved.
namespace LedgerExport {

struct Choice {
    std::string id;
    QString text;
};

/// As the page is narrowed: its period, accounts, currencies and kinds. All time is from the first entry to the last
/// one, or today where that is later.
LedgerExportForm opened(const LedgerFilter& filter, const LedgerSnapshot& snapshot, std::string_view today);

LedgerExportScope scopeOf(const LedgerExportForm& form);

/// The accounts that the current member sees and the currencies that these hold, in the order of the snapshot.
std::vector<Choice> accounts(const LedgerSnapshot& snapshot);
std::vector<Choice> currencies(const LedgerSnapshot& snapshot);

/// What is wrong with each part of the form, in words; empty where nothing is.
struct Problems {
    QString firstDay;
    QString lastDay;
    QString kinds;

    [[nodiscard]] bool any() const { return !firstDay.isEmpty() || !lastDay.isEmpty() || !kinds.isEmpty(); }
};
Problems problems(const LedgerExportForm& form, std::string_view today, std::string_view locale);

/// The refusal as it is shown.
Failure failureOf(ExportRefusal refusal);

/// What a file of this scope would hold, worked out on a worker.
struct Preview {
    SnapshotPointer books; // from which it was worked out
    LedgerExportScope scope;
    std::expected<LedgerExportPreview, ExportRefusal> counts;
};
QCoro::Task<Preview> preview(SnapshotPointer books, LedgerExportScope scope);

struct Saved {};
using Outcome = std::variant<Saved, Failure, SavingProblem>;
/// Makes the file of `previewed` and writes it to `path` if the books still say the same. Nothing is written otherwise.
QCoro::Task<Outcome> save(LedgerStore* store, Preview previewed, std::filesystem::path path, std::string locale);

}
