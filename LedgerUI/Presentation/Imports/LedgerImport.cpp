#include "LedgerUI/Presentation/Imports/LedgerImport.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <set>

#include <QStringList>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/Imports/LedgerImportWords.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();
constexpr std::size_t bytesPerKilobyte = 1024;

/// One thing that keeps the file from being imported, whoever found it.
struct Finding {
    int line = 1;
    QString column; // its name, where a single cell is at fault
    QString value;
    QString text;
    QString remedy;
};

/// The part of a bilingual head that the language reads: "日期 Date".
QString columnName(std::size_t column, std::string_view locale)
{
    const auto head = LedgerImportCSV::headers[column];
    const auto blank = head.find(' ');
    return qString(locale.starts_with("zh") ? head.substr(0, blank) : head.substr(blank + 1));
}

/// The finding in this place, issues of the plan before refusals of the books.
Finding findingAt(const ImportReading& reading, std::size_t at, std::string_view locale)
{
    const auto& issues = reading.plan.issues;
    if (at >= issues.size()) {
        const auto& refusal = reading.refusals[at - issues.size()];
        return {.line = refusal.line,
                .column = {},
                .value = {},
                .text = qString(refusal.problem.message(locale)),
                .remedy = wordIn(locale, importWords(), "do.refused")};
    }
    const auto& issue = issues[at];
    const auto isSeparator = issue.line == 1 && issue.value;
    return {.line = issue.line,
            .column = issue.column ? columnName(*issue.column, locale) : QString{},
            .value = qString(orEmpty(issue.value)),
            .text = qString(LedgerImportWords::text(issue, locale)),
            .remedy = wordIn(locale, importWords(), "do." + (isSeparator ? std::string{"separator"} : issue.message))};
}

/// "Amount: Amount must be a valid number greater than zero. Write digits with …"
QString inFull(const Finding& finding, std::string_view locale)
{
    const auto issue = finding.column.isEmpty() ? finding.text
                                                : wordIn(locale, ledgerWords(), "chip",
                                                         {finding.column.toStdString(), finding.text.toStdString()});
    return issue + QLatin1Char(' ') + finding.remedy;
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
    reading.text.assign(std::istreambuf_iterator<char>{file}, {});
    reading.bytes = reading.text.size();
    reading.plan = LedgerImportCSV::plan(reading.text, *reading.books);
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

QString accountsOf(const TransactionInput& input, const LedgerNames& names)
{
    std::string text;
    for (const auto& id : {input.sourceAccountID, input.targetAccountID}) {
        if (id)
            text += (text.empty() ? "" : " → ") + names.account(*id);
    }
    return qString(text);
}

/// What an entry is: its category or else its kind, and what is noted beside it.
PlainCell entryCell(const TransactionInput& input, const LedgerNames& names, bool isRecorded)
{
    const auto& locale = names.locale();
    QStringList parts{input.categoryID ? qString(names.category(*input.categoryID))
                                       : wordIn(locale, ledgerWords(), "kind." + input.kind),
                      qString(input.note)};
    parts.removeAll(QString{});
    if (isRecorded)
        parts.prepend(wordIn(locale, importWords(), "already"));
    return {.text = parts.join(QStringLiteral(" · ")).simplified(),
            .look = isRecorded ? PlainCell::Look::quiet : PlainCell::Look::normal,
            .glyph = entryKindGlyph(input.kind)};
}

/// What is moved, and what an exchange brings in its place.
PlainCell moved(const TransactionInput& input, std::string_view locale)
{
    auto cell = money(input.amountMinor, input.currency, locale);
    if (!input.targetAmountMinor || !input.targetCurrency)
        return cell;
    const auto received = money(*input.targetAmountMinor, *input.targetCurrency, locale);
    cell.text += QStringLiteral(" → ") + received.text;
    cell.spoken += QStringLiteral(" → ") + received.spoken;
    return cell;
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

QCoro::Task<LedgerImport::Answer> LedgerImport::read(std::filesystem::path path, SnapshotPointer books,
                                                     std::string today, std::string locale)
{
    const auto answer = std::make_shared<Answer>();
    auto working = runForSize(onWorker, [answer, path = std::move(path), books = std::move(books),
                                         today = std::move(today), locale = std::move(locale)] {
        ImportReading reading;
        reading.path = path;
        reading.books = books;
        readFile(reading);
        if (!reading.isUnreadable && reading.plan.issues.empty())
            tryOut(reading, today);
        answer->table = found(reading, locale);
        answer->reading = releasedByWorker<ImportReading, FreedRoom::handedBack>(std::move(reading));
    });
    co_await working;
    co_return std::move(*answer);
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

LedgerImport::Table LedgerImport::found(const ImportReading& reading, std::string_view locale)
{
    if (reading.issueCount() > 0)
        return issues(reading, locale);
    return reading.isReady() ? entries(reading, locale) : Table{};
}

LedgerImport::Table LedgerImport::issues(const ImportReading& reading, std::string_view locale)
{
    const auto head = [&](std::string_view key) { return wordIn(locale, importWords(), key); };
    Table table{.columns = {{.head = head("line"), .align = PlainColumn::Align::right},
                            {.head = head("column")},
                            {.head = head("value")},
                            {.head = head("issue")}},
                .rows = {}};
    const auto all = reading.issueCount();
    for (std::size_t at = 0; at < std::min(all, issuesShown); ++at) {
        const auto finding = findingAt(reading, at, locale);
        table.rows.push_back(
            {.id = std::to_string(at),
             .cells = {plain(QString::number(finding.line)), plain(finding.column),
                       plain(finding.value.simplified(), PlainCell::Look::quiet), plain(finding.text)}});
    }
    if (all > issuesShown) {
        PlainRow rest{.id = "rest", .cells = std::vector<PlainCell>(table.columns.size())};
        rest.cells.back() =
            plain(countedIn(locale, importWords(), "issuesMore", all - issuesShown), PlainCell::Look::quiet);
        table.rows.push_back(std::move(rest));
    }
    return table;
}

LedgerImport::Table LedgerImport::entries(const ImportReading& reading, std::string_view locale)
{
    const auto head = [&](std::string_view key) { return wordIn(locale, importWords(), key); };
    Table table{.columns = {{.head = head("line"), .align = PlainColumn::Align::right, .isPart = true},
                            {.head = head("date")},
                            {.head = head("account")},
                            {.head = head("entry")},
                            {.head = head("amount"), .align = PlainColumn::Align::right}},
                .rows = {}};
    const LedgerNames names{*reading.books, std::string{locale}};
    const VisibleBooks books{*reading.books};
    const auto& inputs = reading.plan.inputs;
    table.rows.reserve(inputs.size());
    for (std::size_t at = 0; at < inputs.size(); ++at) {
        const auto& input = inputs[at];
        const bool isRecorded = books.entry(input.idempotencyKey) != nullptr;
        table.rows.push_back(
            {.id = input.idempotencyKey,
             .cells = {plain(QString::number(reading.plan.lines[at])), plain(DayText::shortDate(input.date, locale)),
                       plain(accountsOf(input, names)), entryCell(input, names, isRecorded), moved(input, locale)}});
    }
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

QString LedgerImport::issueText(const ImportReading& reading, std::string_view rowID, std::string_view locale)
{
    std::size_t at = 0;
    const auto [rest, failed] = std::from_chars(rowID.data(), rowID.data() + rowID.size(), at);
    if (failed != std::errc{} || rest != rowID.data() + rowID.size() || at >= reading.issueCount())
        return {};
    return inFull(findingAt(reading, at, locale), locale);
}

QString LedgerImport::issuesText(const ImportReading& reading, std::string_view locale)
{
    QStringList lines;
    for (std::size_t at = 0; at < reading.issueCount(); ++at) {
        const auto finding = findingAt(reading, at, locale);
        lines << QStringList{QString::number(finding.line), finding.column, finding.value.simplified(), finding.text,
                             finding.remedy}
                     .join(QLatin1Char{'\t'});
    }
    return lines.join(QLatin1Char{'\n'}) + QLatin1Char{'\n'};
}

bool LedgerImport::hasRows(const ImportReading& reading)
{
    return !reading.isUnreadable && !reading.plan.malformed;
}

std::string LedgerImport::issuesFile(const ImportReading& reading, std::string_view locale)
{
    std::map<int, std::string> byLine;
    for (std::size_t at = 0; at < reading.issueCount(); ++at) {
        const auto finding = findingAt(reading, at, locale);
        auto& text = byLine[finding.line];
        text += (text.empty() ? "" : " ") + inFull(finding, locale).toStdString();
    }
    return LedgerImportCSV::withIssues(reading.text, byLine);
}
