#include "Benchmarks/StoreFigures.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <boost/describe.hpp>
#include <fmt/core.h>

#include "Benchmarks/Samples.h"
#include "Benchmarks/ServedBooks.h"
#include "Benchmarks/StepFigures.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/testing/HttpClient.h"
#include "LedgerUI/Components/Print/PagePainter.h"
#include "LedgerUI/Presentation/Exports/LedgerExportForm.h"
#include "LedgerUI/Presentation/Exports/LedgerPrint.h"
#include "LedgerUI/Presentation/Print/Paginator.h"
#include "LedgerUI/Screens/Exports/LedgerExportDialog.h"
#include "LedgerUI/Screens/Imports/ImportDialog.h"
#include "LedgerUI/Theme/TypeScale.h"

using namespace LedgerService;

namespace {

constexpr std::size_t printedRows = 1000;
constexpr std::size_t importedRows = 10'000;

struct SignedIn {
    std::string token;
};
BOOST_DESCRIBE_STRUCT(SignedIn, (), (token))

void printPaper(const LedgerStore& store, int repetitions)
{
    const auto book = std::make_shared<const LedgerBook>(store.snapshot(), "en-US");
    const auto today = promised(LedgerDay::parse(store.today()), "the store tells its day as one");
    auto document = LedgerPrint::list(listingOf(book, {.filter = {}, .sort = {}, .today = today}),
                                      {.day = store.today(), .time = "12:00"});
    auto& rows = document.tables.front().rows;
    require(rows.size() >= printedRows, "the books hold as many entries");
    rows.resize(printedRows);
    const auto families = TypeScale::font(TypeStep::body).families();
    std::size_t bytes = 0;
    printStep(
        "PDF of 1,000 rows", repetitions, [] {},
        [&] { bytes = PagePainter::pdf(Paginator::pages(document, {}, families)).size(); });
    fmt::print("  {} bytes\n", bytes);
}

void printFile(LedgerStore& store, int repetitions)
{
    const QTemporaryDir folder;
    const std::filesystem::path path{folder.filePath(QStringLiteral("ledger.csv")).toStdString()};
    const auto page =
        std::make_shared<const LedgerExport::Page>(LedgerExport::Page{.filter = {}, .today = store.today()});
    const auto form = LedgerExport::opened(*page, *store.snapshot());
    std::optional<LedgerExport::Preview> previewed;
    const auto preview = [&] {
        previewed.reset();
        QCoro::connect(LedgerExport::preview({store.snapshot(), form, page, "en-US"}), &store,
                       [&](LedgerExport::Preview made) { previewed = std::move(made); });
        waitFor([&] { return previewed.has_value(); });
    };
    printStep("export of all entries counted", repetitions, [] {}, preview);
    const auto save = [&] {
        bool isSaved = false;
        QCoro::connect(LedgerExport::save(&store, page, *previewed, path, "en-US"), &store,
                       [&](const LedgerExport::Outcome& outcome) {
                           require(std::holds_alternative<LedgerExport::Saved>(outcome), "the file is written");
                           isSaved = true;
                       });
        waitFor([&] { return isSaved; });
    };
    printStep("export of all entries checked and written", repetitions, preview, save);
    fmt::print("  {} bytes\n", std::filesystem::file_size(path));
}

/// The dialog itself, since it is the window that must go on answering while the file is counted, checked and written.
void printExportDialog(LedgerStore& store, int repetitions)
{
    const QTemporaryDir folder;
    const std::filesystem::path path{folder.filePath(QStringLiteral("ledger.csv")).toStdString()};
    const auto book = std::make_shared<const LedgerBook>(store.snapshot(), "en-US"); // as the page has it
    QPointer<LedgerExportDialog> dialog;
    const auto close = [&] {
        if (dialog)
            dialog->leave();
        waitFor([&] { return !dialog; });
    };
    const auto open = [&] {
        dialog = new LedgerExportDialog(store, {.filter = {}, .book = book, .today = store.today()}, nullptr);
        QTimer::singleShot(std::chrono::milliseconds{1}, dialog.data(), &QDialog::open); // as the page does
        const auto* entries = dialog->findChild<QLabel*>(QStringLiteral("preview.transactions"));
        require(entries, "the dialog tells how many entries there are");
        waitFor([&] { return dialog->isVisible() && entries->text() != QStringLiteral("–"); });
        dialog->grab();
    };
    const auto reopen = [&] {
        close();
        open();
    };
    const auto save = [&] {
        dialog->saveTo(path);
        waitFor([&] { return !dialog; }); // it closes once the file is written
    };
    printStep("export dialog shown, until all is counted", repetitions, close, open);
    printStep("  and saved by it, checked and written", repetitions, reopen, save);
    require(std::filesystem::file_size(path) > 0, "the file is written");
}

/// A file of incomes of today, each with a note of its own.
std::string rowsOf(LedgerStore& store, std::string_view batch)
{
    const auto& account = store.snapshot()->accounts.front();
    const auto category = store.entryCategories(EntryKind::income).front()->names.at("en-US");
    auto file = LedgerImportCSV::templateText();
    for (std::size_t row = 0; row < importedRows; ++row)
        file += fmt::format("\"{}\",\"income\",\"{}\",\"{}\",\"1\",\"{}\",\"{} {}\",\"\",\"\",\"\"\r\n", store.today(),
                            account.name, account.currencies.front(), category, batch, row);
    return file;
}

/// By a client that only sends and reads; milliseconds.
double sendBare(LedgerStore& store, std::uint16_t port, std::string_view batch)
{
    const auto plan = LedgerImportCSV::plan(rowsOf(store, batch), *store.snapshot());
    require(plan.issues.empty() && plan.inputs.size() == importedRows, "the rows can be imported");
    HttpClient client{port};
    const auto login =
        client.send("POST", "/v1/auth/login", {},
                    fmt::format(R"({{"email":"{}","password":"{}"}})", ServedBooks::email, ServedBooks::password));
    const auto signedIn = Json::decode<SignedIn>(login.body);
    require(signedIn.has_value(), "the service lets the member in");
    Samples whole;
    whole.time([&] {
        for (const auto& input : plan.inputs) {
            const auto answer = client.send("POST", "/v1/transactions", signedIn->token, Json::encode(input));
            require(answer.status == 200, "the service records it");
        }
    });
    return whole.quantile(0);
}

QPushButton* button(const char* name)
{
    for (auto* each : QApplication::allWidgets()) {
        if (each->objectName() == QLatin1String{name} && each->isVisible())
            return qobject_cast<QPushButton*>(each);
    }
    return nullptr;
}

void press(const char* name)
{
    waitFor([name] {
        const auto* found = button(name);
        return found && found->isEnabled();
    });
    button(name)->click();
}

/// By the window's own dialog, from the confirmation until it says that all is recorded; milliseconds.
double importByWindow(LedgerStore& store, std::string_view batch, Samples& thread)
{
    const QTemporaryDir folder;
    const std::filesystem::path path{folder.filePath(QStringLiteral("older.csv")).toStdString()};
    std::ofstream{path, std::ios::binary} << rowsOf(store, batch);
    auto* dialog = new ImportDialog(store, nullptr);
    dialog->open();
    dialog->chooseFile(path);
    press("importStart");
    std::size_t recorded = 0;
    QObject::connect(dialog, &ImportDialog::imported, dialog, [&](const auto& ids) { recorded = ids.size(); });
    Samples whole;
    thread.timeThread([&] {
        whole.time([&] {
            press("questionConfirm");
            waitFor([&] { return recorded > 0; });
        });
    });
    require(recorded == importedRows, "every row is recorded");
    press("importClose");
    return whole.quantile(0);
}

}

void printExportFigures(LedgerStore& store, int repetitions)
{
    printPaper(store, repetitions);
    printFile(store, repetitions);
    printExportDialog(store, repetitions);
}

void printImportFigures(LedgerStore& store, std::uint16_t port)
{
    // Taken in turn, since the pace of the disk changes from minute to minute.
    constexpr int rounds = 3;
    for (int round = 0; round < rounds; ++round) {
        const auto bare = sendBare(store, port, fmt::format("bare {}", round));
        Samples thread;
        const auto window = importByWindow(store, fmt::format("window {}", round), thread);
        fmt::print("10,000 rows: sent barely {:.0f} ms, imported by the window {:.0f} ms ({:+.1f} %); {:.0f} ms of its "
                   "thread\n",
                   bare, window, (window / bare - 1) * 100, thread.quantile(0));
    }
}
