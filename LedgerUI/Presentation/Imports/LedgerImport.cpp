#include "LedgerUI/Presentation/Imports/LedgerImport.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <set>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/Imports/LedgerImportWords.h"
#include "LedgerUI/Presentation/Imports/ImportWords.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();
constexpr std::size_t bytesPerKilobyte = 1024;

/// One thing that keeps the file from being imported, whoever found it.
struct Finding {
    int line = 1;
    std::string value;
    std::string text;
};

std::vector<Finding> findings(const ImportReading& reading, std::string_view locale)
{
    std::vector<Finding> all;
    all.reserve(reading.issueCount());
    for (const auto& each : reading.plan.issues)
        all.push_back(
            {each.line, std::string{orEmpty(each.value)}, std::string{LedgerImportWords::text(each, locale)}});
    for (const auto& each : reading.refusals)
        all.push_back({each.line, {}, each.problem.message(locale)});
    return all;
}

void readFile(ImportReading& reading)
{
    std::error_code failed;
    const auto size = std::filesystem::file_size(reading.path, failed);
    std::ifstream file{reading.path, std::ios::binary};
    if (failed || !file) {
        reading.isUnreadable = true;
        return;
    }
    reading.bytes = size;
    if (size > LedgerImportCSV::maximumFileSize) {
        reading.plan.issues = {{.line = 1, .message = "fileSize", .value = {}}};
        reading.plan.malformed = true;
        return;
    }
    const std::string content{std::istreambuf_iterator<char>{file}, {}};
    reading.bytes = content.size();
    reading.plan = LedgerImportCSV::plan(content, *reading.books);
}

void tryOut(ImportReading& reading, std::string_view today)
{
    const VisibleBooks books{*reading.books};
    reading.refusals = ImportDryRun::run(reading.plan, books, today);
    reading.recordedBefore = ImportEffects::recordedBefore(reading.plan, books);
    if (reading.refusals.empty())
        reading.effects = ImportEffects::of(reading.plan, books);
}

PlainCell plain(const QString& text, PlainCell::Look look = PlainCell::Look::normal)
{
    return {.text = text, .look = look};
}

PlainCell money(std::int64_t minor, const std::string& currency, std::string_view locale)
{
    const auto amount = balanceText(minor, currency, locale);
    return {.text = amount.text(), .spoken = amount.spoken};
}

/// "and 3 more issues" under the rows that are shown.
void addRest(LedgerImport::Table& table, std::string_view key, std::size_t shown, std::size_t all, std::size_t column,
             std::string_view locale)
{
    if (all <= shown)
        return;
    PlainRow row{.id = "rest", .cells = std::vector<PlainCell>(table.columns.size())};
    row.cells[column] = plain(countedIn(locale, importWords(), key, all - shown), PlainCell::Look::quiet);
    table.rows.push_back(std::move(row));
}

QString accountsOf(const TransactionInput& input, const LedgerNames& names)
{
    std::string text;
    for (const auto& id : {input.sourceAccountID, input.targetAccountID}) {
        if (id)
            text += (text.empty() ? "" : " → ") + names.account(*id);
    }
    return qString(text);
}

}

std::size_t ImportReading::rowCount() const
{
    std::set<int> faulty;
    for (const auto& issue : plan.issues)
        faulty.insert(issue.line);
    return plan.malformed ? 0 : plan.inputs.size() + faulty.size();
}

bool ImportReading::isReady() const
{
    return !isUnreadable && issueCount() == 0 && !plan.inputs.empty();
}

QCoro::Task<ImportReading> LedgerImport::read(std::filesystem::path path, SnapshotPointer books, std::string today)
{
    const auto reading = std::make_shared<ImportReading>();
    reading->path = std::move(path);
    reading->books = std::move(books);
    auto working = runForSize(onWorker, [reading, today = std::move(today)] {
        readFile(*reading);
        if (!reading->isUnreadable && reading->plan.issues.empty())
            tryOut(*reading, today);
    });
    co_await working;
    co_return std::move(*reading);
}

QString LedgerImport::sizeText(const ImportReading& reading, std::string_view locale)
{
    const auto kilobytes = (reading.bytes + bytesPerKilobyte - 1) / bytesPerKilobyte;
    return wordIn(locale, importWords(), "size",
                  {groupedNumber(kilobytes, locale), groupedNumber(reading.rowCount(), locale)});
}

QString LedgerImport::problem(const ImportReading& reading, std::string_view locale)
{
    if (reading.isUnreadable)
        return wordIn(locale, importWords(), "unreadable");
    if (reading.issueCount() > 0)
        return countedIn(locale, importWords(), "issues", reading.issueCount());
    return reading.plan.inputs.empty() ? qString(LedgerImportWords::text("noRows", locale)) : QString{};
}

LedgerImport::Table LedgerImport::issues(const ImportReading& reading, std::string_view locale)
{
    const auto head = [&](std::string_view key) { return wordIn(locale, importWords(), key); };
    Table table{.columns = {{.head = head("line"), .align = PlainColumn::Align::right},
                            {.head = head("value")},
                            {.head = head("issue")}},
                .rows = {}};
    const auto all = findings(reading, locale);
    for (std::size_t at = 0; at < std::min(all.size(), issuesShown); ++at)
        table.rows.push_back(
            {.id = std::to_string(at),
             .cells = {plain(QString::number(all[at].line)), plain(qString(all[at].value), PlainCell::Look::quiet),
                       plain(qString(all[at].text))}});
    addRest(table, "issuesMore", issuesShown, all.size(), 1, locale);
    return table;
}

LedgerImport::Table LedgerImport::entries(const ImportReading& reading, std::string_view locale)
{
    const auto head = [&](std::string_view key) { return wordIn(locale, importWords(), key); };
    Table table{.columns = {{.head = head("line"), .align = PlainColumn::Align::right},
                            {.head = head("date")},
                            {.head = head("kind")},
                            {.head = head("account")},
                            {.head = head("amount"), .align = PlainColumn::Align::right}},
                .rows = {}};
    const LedgerNames names{*reading.books, std::string{locale}};
    const VisibleBooks books{*reading.books};
    const auto& inputs = reading.plan.inputs;
    for (std::size_t at = 0; at < std::min(inputs.size(), entriesShown); ++at) {
        const auto& input = inputs[at];
        auto kind = plain(wordIn(locale, ledgerWords(), "kind." + input.kind));
        if (books.entry(input.idempotencyKey))
            kind = plain(head("already"), PlainCell::Look::chip);
        else
            kind.glyph = entryKindGlyph(input.kind);
        table.rows.push_back(
            {.id = input.idempotencyKey,
             .cells = {plain(QString::number(reading.plan.lines[at])), plain(DayText::shortDate(input.date, locale)),
                       std::move(kind), plain(accountsOf(input, names)),
                       money(input.amountMinor, input.currency, locale)}});
    }
    addRest(table, "entriesMore", entriesShown, inputs.size(), 3, locale);
    return table;
}

LedgerImport::Table LedgerImport::effects(const ImportReading& reading, std::string_view locale)
{
    const auto head = [&](std::string_view key) { return wordIn(locale, importWords(), key); };
    Table table{.columns = {{.head = head("account")},
                            {.head = head("before"), .align = PlainColumn::Align::right},
                            {.head = head("after"), .align = PlainColumn::Align::right}},
                .rows = {}};
    const LedgerNames names{*reading.books, std::string{locale}};
    for (const auto& effect : reading.effects)
        table.rows.push_back(
            {.id = effect.accountID + " " + effect.currency,
             .cells = {plain(qString(names.account(effect.accountID))), money(effect.before, effect.currency, locale),
                       money(effect.after, effect.currency, locale)}});
    return table;
}

QString LedgerImport::issuesText(const ImportReading& reading, std::string_view locale)
{
    QStringList lines;
    for (const auto& each : findings(reading, locale))
        lines << QStringList{QString::number(each.line), qString(each.value).simplified(), qString(each.text)}.join(
            QLatin1Char{'\t'});
    return lines.join(QLatin1Char{'\n'}) + QLatin1Char{'\n'};
}

std::string LedgerImport::issuesFile(const ImportReading& reading, std::string_view locale)
{
    constexpr std::array<std::string_view, 3> columns{"line", "value", "issue"};
    CsvDocument document{columns};
    for (const auto& each : findings(reading, locale))
        document.record({std::to_string(each.line), each.value, each.text});
    return document.take();
}
