#include "LedgerCLI/ReportCommand.h"

#include <algorithm>
#include <array>

#include "LedgerCLI/CommandWords.h"
#include "LedgerCLI/TextTable.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Reports/ReportBook.h"

namespace LedgerCLI {

namespace {

struct CategoryFigure {
    std::string categoryID; // empty: no category
    std::string category;
    std::int64_t amountMinor = 0;
};
BOOST_DESCRIBE_STRUCT(CategoryFigure, (), (categoryID, category, amountMinor))

struct KindFigure {
    std::string kind;
    std::int64_t amountMinor = 0;
};
BOOST_DESCRIBE_STRUCT(KindFigure, (), (kind, amountMinor))

/// One period as it is written. All figures added to the opening give the closing.
struct PeriodFigures {
    std::string from;
    std::string to;
    std::int64_t openingMinor = 0;
    std::vector<CategoryFigure> income; // refunds taken off
    std::vector<CategoryFigure> expense;
    std::vector<KindFigure> movements; // what is neither income nor expense
    std::int64_t closingMinor = 0;
};
BOOST_DESCRIBE_STRUCT(PeriodFigures, (), (from, to, openingMinor, income, expense, movements, closingMinor))

constexpr std::array otherMovements{Movement::transfer, Movement::exchange, Movement::opening,
                                    Movement::capital,  Movement::dividend, Movement::other};

/// A category that the books do not list goes by its identifier.
std::string nameOf(const std::string& categoryID, const CategoryDirectory& directory, std::string_view locale)
{
    if (categoryID.empty())
        return std::string{CommandWords::text("noCategory", locale)};
    const auto* category = directory.find(categoryID);
    return category == nullptr ? categoryID : directory.fullPathName(*category, locale);
}

PeriodFigures figuresOf(const ReportPeriod& period, const CategoryDirectory& directory, std::string_view locale)
{
    PeriodFigures figures{.from = LedgerDay::format(period.days.first),
                          .to = LedgerDay::format(period.days.last),
                          .openingMinor = period.openingMinor,
                          .income = {},
                          .expense = {},
                          .movements = {},
                          .closingMinor = period.closingMinor};
    for (const auto& line : period.categories) {
        (line.side == Movement::income ? figures.income : figures.expense)
            .push_back({line.categoryID, nameOf(line.categoryID, directory, locale), line.netMinor()});
    }
    for (const auto movement : otherMovements)
        figures.movements.push_back({std::string{rawValue(movement)}, period.movements[movement].netMinor()});
    return figures;
}

/// Calls `write(line, categoryID, name, minor)` for each figure, in the order in which they are read.
template <class Write>
void eachLine(const PeriodFigures& figures, Write write)
{
    write("openingBalance", "", "", figures.openingMinor);
    for (const auto& each : figures.income)
        write("income", each.categoryID, each.category, each.amountMinor);
    for (const auto& each : figures.expense)
        write("expense", each.categoryID, each.category, each.amountMinor);
    for (const auto& each : figures.movements)
        write(each.kind, "", "", each.amountMinor);
    write("closingBalance", "", "", figures.closingMinor);
}

std::string csv(const std::vector<PeriodFigures>& periods, std::string_view currency)
{
    constexpr std::array<std::string_view, 8> columns{"from",        "to",       "currency", "line",
                                                      "category_id", "category", "amount",   "amount_minor"};
    CsvDocument document{columns};
    for (const auto& period : periods) {
        eachLine(period, [&](std::string_view line, std::string_view categoryID, std::string_view category,
                             std::int64_t minor) {
            document.record({period.from, period.to, currency, line, categoryID, category,
                             Money::decimalString(minor, currency), std::to_string(minor)});
        });
    }
    return document.take();
}

std::string text(const std::vector<PeriodFigures>& periods, std::string_view currency, std::string_view locale)
{
    TextTable table{{{}, {{}, TextTable::Alignment::right}}};
    for (const auto& period : periods) {
        if (&period != &periods.front())
            table.add({"", ""});
        table.add({CommandWords::filled("periodHeading", locale, {period.from, period.to, currency}), ""});
        eachLine(period, [&](std::string_view line, std::string_view, std::string_view category, std::int64_t minor) {
            const bool balance = line == "openingBalance" || line == "closingBalance";
            if (minor == 0 && !balance)
                return;
            const auto word = CommandWords::text(line, locale);
            const auto label =
                category.empty() ? std::string{word} : CommandWords::filled("ofCategory", locale, {word, category});
            table.add({"  " + label, Money::formatDigits(minor, currency, locale)});
        });
    }
    return table.text();
}

std::expected<std::vector<ReportRange>, CommandFailure> rangesOf(const ReportCommand::Request& request,
                                                                 std::string_view locale)
{
    const auto first = LedgerDay::parse(request.from);
    const auto last = LedgerDay::parse(request.to);
    if (!first || !last || request.to < request.from)
        return std::unexpected(
            CommandFailure{ExitCode::usage, CommandWords::filled("badDay", locale, {request.from, request.to})});
    return ReportRanges::cut({std::chrono::sys_days{*first}, std::chrono::sys_days{*last}}, request.by);
}

/// A mistyped currency or account is said to be one, rather than reported as having moved nothing.
bool isKnown(const ReportCommand::Request& request, const std::vector<Account>& accounts, const ReportBook& book)
{
    const auto currencies = book.currencies();
    const bool isCurrency = CurrencyInfo::isSupported(request.currency) ||
                            std::ranges::find(currencies, request.currency) != currencies.end();
    return isCurrency && std::ranges::all_of(request.accountIDs, [&](const auto& id) {
               return std::ranges::find(accounts, id, &Account::id) != accounts.end();
           });
}

}

CommandResult ReportCommand::run(const ReportSource& source, const Request& request, const OutputStyle& style)
{
    const auto ranges = rangesOf(request, style.locale);
    if (!ranges)
        return std::unexpected(ranges.error());
    ReportScope scope{.currency = request.currency};
    if (!request.accountIDs.empty())
        scope.accountIDs = request.accountIDs;
    const auto book = ReportBook::create(source);
    if (book && !isKnown(request, source.accounts, *book))
        return std::unexpected(
            CommandFailure{ExitCode::refused, std::string{CommandWords::text("scopeUnseen", style.locale)}});
    const auto report = book ? book->report(std::move(scope), *ranges) : std::unexpected(book.error());
    if (!report)
        return std::unexpected(
            CommandFailure{ExitCode::refused, std::string{CommandWords::text("figuresUnavailable", style.locale)}});

    const CategoryDirectory directory{source.categories};
    std::vector<PeriodFigures> periods;
    for (const auto& period : report->periods)
        periods.push_back(figuresOf(period, directory, style.locale));
    switch (style.format) {
    case OutputFormat::json:
        return CommandAnswer{Json::encode(periods) + "\n"};
    case OutputFormat::csv:
        return CommandAnswer{csv(periods, request.currency)};
    case OutputFormat::text:
        break;
    }
    return CommandAnswer{text(periods, request.currency, style.locale)};
}

}
