#pragma once

#include <filesystem>
#include <memory>
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
#include "LedgerCore/Domain/Exports/ExportChanges.h"
#include "LedgerCore/Domain/Exports/LedgerExportSelection.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"
#include "LedgerUI/Presentation/Print/PrintedDocument.h"

class LedgerStore;

/// What a person chose before the ledger is exported. Days are "YYYY-MM-DD", empty while what was typed names none; no
/// chosen account or currency stands for every one that the member sees.
struct LedgerExportForm {
    using Choices = std::set<std::string, std::less<>>;
    /// Which entries the file holds: those of the days, accounts, currencies and kinds chosen here, or those that the
    /// page shows or that are selected on it.
    enum class Source { chosen, shown, selected };

    Source source = Source::chosen;
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

/// The ledger page from which an export begins.
struct Page {
    LedgerFilter filter = {};
    LedgerBookPointer book = {};              // that the page shows, or null
    SharedList<std::string> selectedIDs = {}; // where it is about these
    std::string today = {};
};
using PagePointer = std::shared_ptr<const Page>;

/// As the page is narrowed: its period, accounts, currencies and kinds. All time is from the first entry to the last
/// one, or today where that is later. A page that is narrowed by more than these, or has a selection, is exported as it
/// is.
LedgerExportForm opened(const Page& page, const LedgerSnapshot& snapshot);
/// The accounts and currencies that the page is narrowed to; none for every one that the member sees.
struct Narrowing {
    LedgerExportForm::Choices accountIDs;
    LedgerExportForm::Choices currencies;
};
Narrowing narrowing(const LedgerFilter& filter);
/// What can be chosen between; one alone is no choice.
std::vector<LedgerExportForm::Source> sources(const Page& page);

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

/// What a file of the form would hold, worked out on a worker.
struct Preview {
    SnapshotPointer books; // from which it was worked out
    LedgerExportForm form;
    LedgerExportScope scope;
    std::expected<LedgerExportPreview, ExportRefusal> counts;
    std::vector<PrintedFact> facts; // how the page is narrowed, where its entries are exported
    ExportChanges changes;          // since the preview before, where that was of the same form
};
struct Question {
    SnapshotPointer books;
    LedgerExportForm form;
    PagePointer page;
    std::string locale;
    std::optional<Preview> before = {};
};
QCoro::Task<Preview> preview(Question question);

struct Saved {};
using Outcome = std::variant<Saved, Failure, SavingProblem>;
/// Makes the file of `previewed` and writes it to `path` if the books still say the same, and the page's question still
/// has the same answer. Nothing is written otherwise.
QCoro::Task<Outcome> save(LedgerStore* store, PagePointer page, Preview previewed, std::filesystem::path path,
                          std::string locale);
/// Whether a failure says that the books have changed since.
bool saysChanged(const Failure& failure);

}
